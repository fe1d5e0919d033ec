// What OpenSSL says about certificates.
#include "preflight/tls/pem.hpp"
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <ctime>

#include <openssl/err.h>
#include <openssl/x509v3.h>

namespace orvane::preflight {
namespace {

bool is_self_signed(X509* certificate) {
    return (X509_get_extension_flags(certificate) & EXFLAG_SS) != 0;
}

bool has_key(X509* certificate, EVP_PKEY* key) {
    EVP_PKEY* const own = X509_get0_pubkey(certificate);
    return own != nullptr && EVP_PKEY_eq(own, key) == 1;
}

bool is_issued_by(X509* certificate, X509* issuer) {
    EVP_PKEY* const key = X509_get0_pubkey(issuer);
    return X509_check_issued(issuer, certificate) == X509_V_OK && key != nullptr &&
           X509_verify(certificate, key) == 1;
}

bool knows_issuer(X509_STORE* store, X509* certificate) {
    if (store == nullptr) return false;
    const StoreContext context(X509_STORE_CTX_new());
    X509* issuer = nullptr;
    const bool found = X509_STORE_CTX_init(context.get(), store, certificate, nullptr) == 1 &&
                       X509_STORE_CTX_get1_issuer(&issuer, context.get(), certificate) == 1;
    X509_free(issuer);
    ERR_clear_error();
    return found;
}

/// Where the issuer says that its certificate can be got; empty: it does not say.
std::string address_of_issuer(X509* certificate) {
    const std::unique_ptr<AUTHORITY_INFO_ACCESS, Releases<AUTHORITY_INFO_ACCESS_free>> access(
        static_cast<AUTHORITY_INFO_ACCESS*>(
            X509_get_ext_d2i(certificate, NID_info_access, nullptr, nullptr)));
    for (int i = 0; access && i < sk_ACCESS_DESCRIPTION_num(access.get()); ++i) {
        const ACCESS_DESCRIPTION* const one = sk_ACCESS_DESCRIPTION_value(access.get(), i);
        if (OBJ_obj2nid(one->method) != NID_ad_ca_issuers || one->location->type != GEN_URI) continue;
        const ASN1_IA5STRING* const uri = one->location->d.uniformResourceIdentifier;
        return {reinterpret_cast<const char*>(ASN1_STRING_get0_data(uri)),
                static_cast<std::size_t>(ASN1_STRING_length(uri))};
    }
    return {};
}

using HostNames = std::unique_ptr<GENERAL_NAMES, Releases<GENERAL_NAMES_free>>;

std::vector<std::string> hosts_in(X509* certificate) {
    const HostNames names(
        static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)));
    std::vector<std::string> found;
    for (int i = 0; names && i < sk_GENERAL_NAME_num(names.get()); ++i) {
        const GENERAL_NAME* const name = sk_GENERAL_NAME_value(names.get(), i);
        if (name->type != GEN_DNS) continue;
        const auto* const data = reinterpret_cast<const char*>(ASN1_STRING_get0_data(name->d.dNSName));
        found.emplace_back(data, static_cast<std::size_t>(ASN1_STRING_length(name->d.dNSName)));
    }
    return found;
}

std::optional<std::time_t> time_of(const ASN1_TIME* time) {
    const std::unique_ptr<ASN1_TIME, Releases<ASN1_TIME_free>> epoch(ASN1_TIME_set(nullptr, 0));
    int days = 0, seconds = 0;
    if (ASN1_TIME_diff(&days, &seconds, epoch.get(), time) != 1) return std::nullopt;
    return std::time_t{days} * 24 * 60 * 60 + seconds;
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

void add_key(CertificateFacts& facts, EVP_PKEY* key) {
    // As strong as an RSA key of 2048 bits.
    constexpr int least = 112;
    facts.uncommon_key = key == nullptr ? "of an unknown type" : uncommon_form(key);
    if (key == nullptr) return;
    facts.key_bits = EVP_PKEY_get_bits(key);
    facts.has_weak_key =
        (EVP_PKEY_is_a(key, "RSA") && facts.key_bits < 2048) || EVP_PKEY_get_security_bits(key) < least;
}

std::string weak_digest_of(X509* certificate) {
    int digest = NID_undef;
    X509_get_signature_info(certificate, &digest, nullptr, nullptr, nullptr);
    const bool is_weak = digest == NID_sha1 || digest == NID_md5 || digest == NID_md5_sha1;
    return is_weak ? OBJ_nid2ln(digest) : "";
}

CertificateFacts facts_of(const Certificate& one) {
    X509* const certificate = one.get();
    CertificateFacts facts;
    facts.validity = validity_of(certificate);
    facts.hosts = hosts_in(certificate);
    facts.is_self_signed = is_self_signed(certificate);
    facts.is_for_servers = X509_check_purpose(certificate, X509_PURPOSE_SSL_SERVER, 0) == 1;
    facts.is_for_issuing = X509_check_ca(certificate) != 0;
    facts.issuer = text_of(X509_get_issuer_name(certificate));
    facts.issuer_address = address_of_issuer(certificate);
    facts.weak_digest = weak_digest_of(certificate);
    add_key(facts, X509_get0_pubkey(certificate));
    return facts;
}

} // namespace

Validity validity_of(const X509* certificate) {
    return {time_of(X509_get0_notBefore(certificate)), time_of(X509_get0_notAfter(certificate))};
}

Certificates read_chain(const TlsCheck& check) {
    if (!check.files.chain) return {};
    const PemFile pem = read_pem(*check.files.chain);
    if (!has_what_is_wanted(pem, Content::certificate, *check.files.chain, flag::https_cert_chain_file,
                            *check.settings().cert_chain_file(), check.findings))
        return {};
    return certificates_in(pem, flag::https_cert_chain_file, check.findings);
}

std::size_t owner_of(EVP_PKEY* key, const Certificates& chain) {
    const auto owner =
        std::ranges::find_if(chain, [key](const Certificate& one) { return has_key(one.get(), key); });
    ERR_clear_error();
    return static_cast<std::size_t>(owner - chain.begin());
}

ChainFacts facts_of(const Certificates& chain, X509_STORE* store) {
    ChainFacts facts;
    std::ranges::transform(chain, std::back_inserter(facts.certificates),
                           [](const Certificate& one) { return facts_of(one); });
    facts.is_issued_by = [&chain](std::size_t one, std::size_t issuer) {
        return is_issued_by(chain[one].get(), chain[issuer].get());
    };
    facts.is_issuer_known = [&chain, store](std::size_t one) {
        return knows_issuer(store, chain[one].get());
    };
    facts.is_for_host = [&chain](const std::string& host) {
        return X509_check_host(chain.front().get(), host.data(), host.size(),
                               X509_CHECK_FLAG_NEVER_CHECK_SUBJECT, nullptr) == 1;
    };
    return facts;
}

} // namespace orvane::preflight
