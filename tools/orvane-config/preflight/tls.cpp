// Keys, certificates, and what the HTTPS listener offers.
#include "preflight/groups.hpp"
#include "preflight/tls/tls_check.hpp"

#include "reference/flag_texts.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

constexpr std::u16string_view tls_flags[] = {
    flag::https_private_key_file,
    flag::https_key_passphrase_file,
    flag::https_cert_chain_file,
    flag::https_ca_file,
    flag::https_use_system_store,
    flag::https_use_crl,
    flag::https_tmp_dh_param_file,
    flag::https_protocol_list,
    flag::https_cipher_list,
    flag::https_tmp_ec_param,
    flag::https,
};

/// About every flag of which nothing was said.
void add_to_the_rest(Kind kind, const std::string& what, const Context& context, Findings& findings) {
    const std::vector<Finding> found = findings.so_far();
    for (const std::u16string_view flag : tls_flags) {
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
    if (!look_at_tls_contents({*https, files, findings})) {
        add_to_the_rest(Kind::not_looked_at, "not looked at in this build", context, findings);
        return;
    }
    // What is wrong in one place can hide what is wrong in another.
    const auto is_sure = [](const Finding& one) {
        return about(one.kind).severity == Severity::warning || about(one.kind).severity == Severity::fine;
    };
    if (std::ranges::all_of(findings.so_far(), is_sure))
        add_to_the_rest(Kind::tls_fine, "nothing is wrong with this", context, findings);
}

} // namespace orvane::preflight
