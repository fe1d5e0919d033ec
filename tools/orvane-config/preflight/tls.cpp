// Keys, certificates, and what the HTTPS listener offers.
#include "preflight/groups.hpp"
#include "preflight/tls/tls_check.hpp"

#include "reference/flag_texts.hpp"
#include "reference/reference.hpp"
#include "text/lists.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

/// About who has access, which nothing on this machine can contradict.
constexpr std::u16string_view about_clients[] = {flag::https_verify_peer_mode, flag::https_allow_all_clients,
                                                 flag::https_allowed_client};

/// The others: what is in files or in a store, then what is offered by name, then the listener.
std::vector<std::u16string_view> tls_flags() {
    std::vector<std::u16string_view> flags;
    for (const bool by_name : {false, true})
        for (const Reference& one : references())
            if (one.trait == Trait::needs_https && (one.form == Form::text) == by_name &&
                !contains(about_clients, one.wide))
                flags.push_back(one.wide);
    flags.push_back(flag_with(Trait::starts_https).wide);
    return flags;
}

bool is_about(const Finding& finding, std::u16string_view flag, bool any) {
    return finding.flag == flag && (any || is_in_the_way(finding));
}

/// About every given flag that this build can look at, or cannot, of which nothing else was said. What it did not look at is
/// named even if something was noticed.
void add_to_the_rest(bool looked_at, const Context& context, Findings& findings) {
    const std::vector<Finding> found = findings.so_far();
    const Kind kind = looked_at ? Kind::tls_fine : Kind::not_looked_at;
    for (const std::u16string_view flag : tls_flags()) {
        if (can_look_at(flag) != looked_at || occurrence_of({kind, flag}, context) == nullptr) continue;
        if (std::ranges::none_of(found, [&](const Finding& one) { return is_about(one, flag, looked_at); }))
            findings.add(kind, flag, looked_at ? "usable" : "not looked at in this build");
    }
}

} // namespace

void look_at_tls(const Context& context, Findings& findings) {
    const auto& https = context.settings.https();
    if (!https) return;
    const auto& settings = https->ssl_context();
    if (!settings.private_key_file() || !settings.cert_chain_file())
        findings.add(Kind::https_without_certificate, flag::https,
                     settings.private_key_file() ? "there is a private key, but no certificate"
                                                 : "there is neither a private key nor a certificate",
                     "Give both. Without them no client can connect.");
    const TlsFiles files = read_tls_files(settings, findings);
    look_at_tls_contents({*https, files, context.days, findings, context.security});
    // What is wrong in one place can hide what is wrong in another.
    if (std::ranges::none_of(findings.so_far(), is_in_the_way)) add_to_the_rest(true, context, findings);
    add_to_the_rest(false, context, findings);
}

} // namespace orvane::preflight
