// Combinations of flags that the server accepts, but that make no sense together.
#include "explaining/warning_rules.hpp"
#include "probing/occurrence_text.hpp"
#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <set>

namespace orvane {
namespace {

using qel::util::ssl::SslVerifyPeerMode;

std::string name(std::u16string_view flag) {
    return qel::i18n::ustring_to_utf8(std::u16string(flag));
}

/// Why leaving the occurrence out would not change the record.
std::string why_without_effect(const Redundant& redundant) {
    if (redundant.needs_https) return " has no effect without " + name(flag::https);
    if (!redundant.replaced_by) return " has no effect: what follows replaces it";
    const Occurrence &one = redundant.occurrence, &other = *redundant.replaced_by;
    const std::string where = shown(other) + " (" + numbers_of(other) + ")";
    if (other[0].text != one[0].text)
        return " has no effect: " + where + " replaces the listener; put " + shown(one[0].text) + " after it";
    return other.back().text == one.back().text ? " is repeated by " + where
                                                : " has no effect: " + where + " replaces it";
}

/// One text for all names of this machine; empty for all addresses.
std::string host_key(const std::u16string& host) {
    const std::string text = qel::i18n::ustring_to_utf8(lower(host));
    if (text == "0.0.0.0" || text == "[::]" || text == "*") return "";
    return text == "127.0.0.1" || text == "[::1]" ? "localhost" : text;
}

struct Address {
    const Occurrence* given;
    std::string host; ///< empty: all addresses
    unsigned port;
};

bool overlap(const Address& one, const Address& other) {
    return one.port == other.port && one.port != 0 &&
           (one.host.empty() || other.host.empty() || one.host == other.host);
}

/// Reports each element that the list already has, or only that there is one.
template <class Key>
void find_twice(const std::vector<Key>& keys, const AcceptedLine& accepted,
                const std::set<std::u16string_view>& flags, WarningCollector& warnings) {
    std::vector<const Occurrence*> given;
    for (const Occurrence& one : accepted.line)
        if (flags.contains(one[0].text)) given.push_back(&one);
    // If a value adds several elements, it is not known which one is repeated.
    const bool each = keys.size() == given.size();
    std::set<Key> known;
    for (std::size_t i = 0; i != keys.size(); ++i) {
        if (known.insert(keys[i]).second || given.empty()) continue;
        warnings.about_value(each ? given[i] : given.back(), ": this is already in the list");
        if (!each) return;
    }
}

} // namespace

void no_effect(const AcceptedLine& accepted, WarningCollector& warnings) {
    for (const Redundant& redundant : accepted.effects.redundant)
        warnings.about_flag(redundant.occurrence, why_without_effect(redundant));
}

void linger_without_http(const AcceptedLine& accepted, WarningCollector& warnings) {
    const Occurrence* const linger = accepted.last(flag::http_linger_threshold);
    if (linger != nullptr && accepted.last(flag::http) == nullptr)
        warnings.about_flag(*linger, " makes a listener on port 0, because there is no " + name(flag::http));
}

void same_port(const AcceptedLine& accepted, WarningCollector& warnings) {
    std::vector<Address> addresses;
    const auto add = [&](std::u16string_view flag, const qel::config::HttpSettings& listener) {
        addresses.push_back({accepted.last(flag), host_key(listener.host().value_or(u"")), listener.port()});
    };
    if (const auto& http = accepted.settings.http()) add(flag::http, *http);
    if (const auto& https = accepted.settings.https()) add(flag::https, https->http());
    if (const auto& port = accepted.settings.control_port())
        addresses.push_back({accepted.last(flag::control_port), "", *port});
    for (std::size_t i = 1; i < addresses.size(); ++i)
        for (std::size_t j = 0; j != i; ++j)
            if (overlap(addresses[i], addresses[j]) && addresses[j].given != nullptr)
                warnings.about_value(addresses[i].given, ": " + shown(*addresses[j].given) +
                                                             " has the same port, and the addresses overlap");
}

void no_certificate(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& https = accepted.settings.https();
    if (!https || https->ssl_context().cert_chain_file()) return;
    const bool has_key = https->ssl_context().private_key_file().has_value();
    warnings.about_value(accepted.last(flag::https),
                         has_key ? ": there is a private key, but no " + name(flag::https_cert_chain_file)
                                 : ": " + name(flag::https_private_key_file) + " and " +
                                       name(flag::https_cert_chain_file) + " are missing");
}

void access(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& https = accepted.settings.https();
    const Occurrence* const given = accepted.last(flag::https_allow_all_clients);
    if (!https || given == nullptr) return;
    if (https->ssl_context().verify_peer_mode() != SslVerifyPeerMode::verify_peer_require_peer_cert)
        warnings.about_flag(*given, " does nothing without " + name(flag::https_verify_peer_mode) +
                                        " verify-peer-require-peer-cert: no client is verified");
    if (!https->ssl_context().allowed_clients().empty())
        warnings.about_flag(*given, " lets every verified client in: " + name(flag::https_allowed_client) +
                                        " restricts nothing");
}

void overflow(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (accepted.settings.server_memory_threshold_overflow_action() &&
        !accepted.settings.server_memory_threshold())
        warnings.about_value(accepted.last(flag::server_memory_threshold_overflow_action),
                             ": there is no " + name(flag::server_memory_threshold));
}

void archive(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& action = accepted.settings.server_memory_threshold_overflow_action();
    if (action && *action == u"archive_responses") return;
    for (const auto flag : {flag::response_archive_root, flag::response_archive_limit})
        warnings.about_value(accepted.last(flag), ": responses are archived only with " +
                                                      name(flag::server_memory_threshold_overflow_action) +
                                                      " archive_responses");
}

void target(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& pool = accepted.settings.worker_pool_settings();
    const auto compare = [&](const auto& pair, std::u16string_view flag, std::u16string_view trigger) {
        if (pair && pair->trigger() && pair->target() && *pair->target() > *pair->trigger())
            warnings.about_value(accepted.last(flag), ": this is above " + shown(*accepted.last(trigger)));
    };
    if (!pool) return;
    compare(pool->memory_limit(), flag::worker_memory_target, flag::worker_memory_trigger);
    compare(pool->queue_time(), flag::queue_time_target, flag::queue_time_trigger);
}

void any_origin(const AcceptedLine& accepted, WarningCollector& warnings) {
    const auto& origins = accepted.settings.cors_allowed_origins();
    if (origins.size() > 1 && contains(origins, "*"))
        warnings.about_value(accepted.last(flag::cors_allowed_origins),
                             ": the * before it already allows all origins");
}

void given_twice(const AcceptedLine& accepted, WarningCollector& warnings) {
    const qel::config::ServerSettings& settings = accepted.settings;
    std::vector<std::string> caches, handlers;
    std::vector<std::u16string> origins;
    if (const auto& list = settings.cache_list())
        for (const auto& cache : list->list())
            caches.push_back(qel::i18n::ustring_to_utf8(cache.provider()) + '@' + host_key(cache.host()) +
                             ':' + std::to_string(cache.port()));
    for (const auto& handler : settings.log_handler())
        handlers.push_back(std::to_string(static_cast<int>(handler.format())) + ';' +
                           std::to_string(static_cast<int>(handler.content())) + ';' + handler.command());
    for (std::string origin : settings.cors_allowed_origins()) {
        if (origin.ends_with('/')) origin.pop_back();
        origins.push_back(lower(qel::i18n::utf8_to_ustring(origin)));
    }
    find_twice(caches, accepted, {flag::start_cache, flag::attach_cache}, warnings);
    find_twice(handlers, accepted, {flag::log_handler}, warnings);
    find_twice(origins, accepted, {flag::cors_allowed_origins}, warnings);
}

void no_listener(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (!accepted.settings.http() && !accepted.settings.https())
        warnings.about_the_line("there is neither " + name(flag::http) + " nor " + name(flag::https) +
                                ": nothing can send requests to the server");
}

} // namespace orvane
