// Hazards: who reaches what, and how much of it.
#include "explaining/hazard_rules.hpp"
#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane::hazards {
namespace {

/// Whether only this machine reaches it; no host: all addresses.
bool is_loopback(const boost::optional<std::u16string>& host) {
    const std::u16string name = lower(host.value_or(u""));
    return name == u"localhost" || name == u"[::1]" || name.ends_with(u".localhost") ||
           (name.starts_with(u"127.") && is_ipv4(name));
}

/// The host of an origin, "http://[::1]:8080".
std::u16string host_in(const std::u16string& origin) {
    const std::u16string rest = origin.substr(origin.find(u"://") + 3);
    return rest.starts_with(u'[') ? rest.substr(0, rest.find(u']') + 1) : rest.substr(0, rest.find(u':'));
}

/// The last occurrence of a flag whose values add up that has the text in its value.
const Occurrence* with_text(const AcceptedLine& accepted, std::u16string_view flag,
                            const std::u16string& text) {
    const Occurrence* found = nullptr;
    for (const Occurrence& one : accepted.line)
        if (one[0].text == flag && one.back().text.find(text) != text.npos) found = &one;
    return found;
}

template <class Wanted>
void find_origins(const AcceptedLine& accepted, WarningCollector& warnings, const char* text, Wanted wanted) {
    constexpr auto flag = flag::cors_allowed_origins;
    for (const std::string& origin : accepted.settings.cors_allowed_origins()) {
        const std::u16string wide = lower(qel::i18n::utf8_to_ustring(origin));
        if (!wanted(wide)) continue;
        const Occurrence* const given = with_text(accepted, flag, qel::i18n::utf8_to_ustring(origin));
        warnings.about_value(given == nullptr ? accepted.last(flag) : given, text);
    }
}

const qel::config::SslContext& tls_of(const AcceptedLine& accepted) {
    return accepted.settings.https()->ssl_context();
}

} // namespace

void any_customer(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& tls = tls_of(accepted);
    if (tls.use_system_store() && (tls.allowed_clients().empty() || tls.allow_all_clients()))
        warnings.about_value(accepted.last(flag::https_use_system_store),
                             ": every client with a certificate of a public authority gets in");
}

void every_client(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (tls_of(accepted).allow_all_clients())
        warnings.about_value(accepted.last(flag::https_allow_all_clients),
                             ": every client of the authority gets in");
}

void no_revocation(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!tls_of(accepted).use_crl())
        warnings.about_value(accepted.last(flag::https_verify_peer_mode),
                             ": revoked certificates are accepted");
}

void any_site(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_origins(accepted, warnings, ": pages of any site can send requests and read the responses",
                 [](const std::u16string& origin) { return origin == u"*" || origin == u"null"; });
}

void http_origin(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_origins(accepted, warnings, ": a page without TLS can be changed on its way",
                 [](const std::u16string& origin) {
                     return origin.starts_with(u"http://") && !is_loopback(host_in(origin));
                 });
}

void plain_http(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!is_loopback(accepted.settings.http()->host()))
        warnings.about_value(accepted.last(flag::http), ": requests are not encrypted on their way");
}

void shown_interfaces(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (is_loopback(accepted.settings.http()->host())) return;
    for (const auto flag : {flag::enable_statistics, flag::enable_discovery})
        warnings.about_value(accepted.last(flag), ": whoever reaches the HTTP port can read this");
}

void error_stack(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!accepted.settings.hide_telvar_error_stack())
        warnings.about_the_line("error responses contain the error stack");
}

void remote_cache(const AcceptedLine& accepted, WarningCollector& warnings) {
    for (const auto& cache : accepted.settings.cache_list()->list())
        if (!is_loopback(cache.host()))
            warnings.about_value(with_text(accepted, flag::attach_cache, cache.host()),
                                 ": what is stored there passes the network without encryption");
}

void no_timeout(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& limit = accepted.settings.request_timeout();
    if (!limit || limit->ticks() == 0) warnings.about_the_line("requests have no time limit");
}

void no_request_limit(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!accepted.settings.request_size_limit()) warnings.about_the_line("requests have no size limit");
}

void no_log_limit(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!accepted.settings.log_rotation_size() || !accepted.settings.log_archive_max_size())
        warnings.about_value(accepted.last(flag::log_root), ": the logs have no size limit");
}

void no_archive_limit(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!accepted.settings.response_archive_limit())
        warnings.about_value(accepted.last(flag::response_archive_root), ": the archive has no size limit");
}

} // namespace orvane::hazards
