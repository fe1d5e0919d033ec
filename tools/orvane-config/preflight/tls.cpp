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

/// About every flag of which nothing was said.
void add_to_the_rest(Kind kind, const std::string& what, const Context& context, Findings& findings) {
    const std::vector<Finding> found = findings.so_far();
    for (const std::u16string_view flag : tls_flags()) {
        const bool given = occurrence_of({kind, flag}, context) != nullptr;
        if (given && std::ranges::find(found, flag, &Finding::flag) == found.end())
            findings.add(kind, flag, what);
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
    if (!can_look_at_tls_contents())
        return add_to_the_rest(Kind::not_looked_at, "not looked at in this build", context, findings);
    look_at_tls_contents({*https, files, context.days, findings, context.security});
    // What is wrong in one place can hide what is wrong in another.
    if (std::ranges::none_of(findings.so_far(), is_in_the_way))
        add_to_the_rest(Kind::tls_fine, "usable", context, findings);
}

} // namespace orvane::preflight
