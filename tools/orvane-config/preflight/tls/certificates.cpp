// The server's certificates: what today's clients make of each.
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <ctime>
#include <span>

#include <openssl/err.h>
#include <openssl/x509v3.h>

namespace orvane::preflight {
namespace {

using HostNames = std::unique_ptr<GENERAL_NAMES, Releases<GENERAL_NAMES_free>>;

/// The host names in the certificate, as far as they can be shown in a line.
std::string host_names_in(X509* certificate) {
    constexpr std::size_t most = 5;
    const HostNames names(
        static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)));
    std::vector<std::string> found;
    for (int i = 0; names && i < sk_GENERAL_NAME_num(names.get()); ++i) {
        const GENERAL_NAME* const name = sk_GENERAL_NAME_value(names.get(), i);
        if (name->type != GEN_DNS) continue;
        const auto* const data = reinterpret_cast<const char*>(ASN1_STRING_get0_data(name->d.dNSName));
        found.emplace_back(data, static_cast<std::size_t>(ASN1_STRING_length(name->d.dNSName)));
    }
    if (found.size() <= most) return joined(found);
    return joined(std::span(found).first(most)) + " and " + std::to_string(found.size() - most) + " more";
}

bool is_address(const std::string& host) {
    const std::unique_ptr<ASN1_OCTET_STRING, Releases<ASN1_OCTET_STRING_free>> address(
        a2i_IPADDRESS(host.c_str()));
    ERR_clear_error();
    return address != nullptr;
}

/// Clients may use other names than the one that the server listens on, but seldom where it is a name.
void look_at_host(const TlsCheck& check, X509* certificate) {
    const auto& host = check.https.http().host();
    const std::string name = host ? qel::i18n::ustring_to_utf8(*host) : "";
    if (name.empty() || name.front() == '[' || is_address(name)) return;
    if (X509_check_host(certificate, name.data(), name.size(), X509_CHECK_FLAG_NEVER_CHECK_SUBJECT,
                        nullptr) == 1)
        return;
    const std::string names = host_names_in(certificate);
    check.findings.add(Kind::certificate_host, flag::https,
                       names.empty() ? "the certificate has no host names (subjectAltName)"
                                     : "the certificate is not for this host, but for " + names,
                       "Request a certificate for the name that clients use.");
}

/// A type or curve that not every client of today takes; empty: all do.
std::string uncommon_form(EVP_PKEY* key) {
    char group[80] = "";
    if (EVP_PKEY_is_a(key, "RSA")) return {};
    if (!EVP_PKEY_is_a(key, "EC")) return std::string("of the type ") + EVP_PKEY_get0_type_name(key);
    EVP_PKEY_get_group_name(key, group, sizeof group, nullptr);
    const std::string_view curve = group;
    if (curve == "prime256v1" || curve == "secp384r1" || curve == "secp521r1") return {};
    return "on the curve " + std::string(curve.empty() ? "(unnamed)" : curve);
}

void look_at_key(const TlsCheck& check, EVP_PKEY* key, const std::string& which) {
    constexpr auto flag = flag::https_cert_chain_file;
    // As strong as an RSA key of 2048 bits.
    constexpr int least = 112;
    const std::string use_another = "Use an RSA key of 2048 bits or more, or a key on prime256v1.";
    const std::string form = key == nullptr ? "of an unknown type" : uncommon_form(key);
    const bool short_rsa = key != nullptr && EVP_PKEY_is_a(key, "RSA") && EVP_PKEY_get_bits(key) < 2048;
    if (key != nullptr && (short_rsa || EVP_PKEY_get_security_bits(key) < least))
        check.findings.add(Kind::weak_key, flag,
                           which + " has a key of only " + std::to_string(EVP_PKEY_get_bits(key)) + " bits",
                           use_another);
    else if (!form.empty())
        check.findings.add(Kind::uncommon_key, flag, which + " has a key " + form,
                           "Browsers need another. " + use_another);
}

void look_at_strength(const TlsCheck& check, X509* certificate, const std::string& which) {
    look_at_key(check, X509_get0_pubkey(certificate), which);
    int digest = NID_undef;
    X509_get_signature_info(certificate, &digest, nullptr, nullptr, nullptr);
    // Nobody checks what a root says about itself.
    if ((X509_get_extension_flags(certificate) & EXFLAG_SS) != 0) return;
    if (digest == NID_sha1 || digest == NID_md5 || digest == NID_md5_sha1)
        check.findings.add(Kind::weak_signature, flag::https_cert_chain_file,
                           which + " is signed with " + OBJ_nid2ln(digest),
                           "Have it issued with a SHA-256 signature.");
}

void look_at_use(const TlsCheck& check, const Certificates& chain) {
    if (X509_check_purpose(chain.front().get(), X509_PURPOSE_SSL_SERVER, 0) != 1)
        check.findings.add(Kind::certificate_use, flag::https_cert_chain_file,
                           "the first certificate is not for use by a TLS server",
                           "Request one with the extended key usage serverAuth.");
    for (std::size_t i = 1; i < chain.size(); ++i)
        if (X509_check_ca(chain[i].get()) == 0)
            check.findings.add(Kind::certificate_use, flag::https_cert_chain_file,
                               "certificate " + std::to_string(i + 1) + " is not for issuing certificates",
                               "After the server's certificate, put only those of its issuers.");
}

} // namespace

void look_at_times(const TlsCheck& check, std::u16string_view flag, const X509* certificate,
                   const std::string& what) {
    const ASN1_TIME *const begin = X509_get0_notBefore(certificate), *const end =
                                                                         X509_get0_notAfter(certificate);
    std::time_t now = std::time(nullptr), later = now + std::time_t{check.days} * 24 * 60 * 60;
    if (X509_cmp_time(begin, &now) > 0)
        check.findings.add(Kind::certificate_not_yet_valid, flag,
                           what + " is not valid before " + text_of(begin),
                           "Check the clock of this machine: date -u");
    if (X509_cmp_time(end, &now) < 0)
        check.findings.add(Kind::certificate_expired, flag, what + " expired at " + text_of(end),
                           "Renew it.");
    else if (X509_cmp_time(end, &later) < 0)
        check.findings.add(Kind::certificate_expires_soon, flag, what + " expires at " + text_of(end),
                           "Renew it.");
}

void look_at_certificates(const TlsCheck& check, const Certificates& chain) {
    look_at_host(check, chain.front().get());
    look_at_use(check, chain);
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const std::string which = "certificate " + std::to_string(i + 1);
        look_at_times(check, flag::https_cert_chain_file, chain[i].get(), which);
        look_at_strength(check, chain[i].get(), which);
    }
    ERR_clear_error();
}

} // namespace orvane::preflight
