// The server's certificates: whether the key is theirs, and who issued them.
#include "preflight/tls/pem.hpp"
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"
#include "text/lists.hpp"

#include <algorithm>

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

using Numbers = std::vector<std::size_t>;

/// The certificates from the first to the last issuer that is in the file, counted from 0.
Numbers issuers_in(const Certificates& chain) {
    Numbers path{0};
    while (!is_self_signed(chain[path.back()].get())) {
        std::size_t next = 0;
        while (next < chain.size() &&
               (contains(path, next) || !is_issued_by(chain[path.back()].get(), chain[next].get())))
            ++next;
        if (next == chain.size()) break;
        path.push_back(next);
    }
    ERR_clear_error();
    return path;
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

std::string listed(const Numbers& numbers) {
    return joined(numbers, ", ", [](std::size_t number) { return std::to_string(number + 1); });
}

void look_at_order(const TlsCheck& check, const Numbers& path, std::size_t count) {
    if (!std::is_sorted(path.begin(), path.end()))
        check.findings.add(Kind::chain_order, flag::https_cert_chain_file,
                           "the certificates are out of order",
                           "Put them in this order: " + listed(path) + ".");
    Numbers others;
    for (std::size_t one = 0; one < count; ++one)
        if (!contains(path, one)) others.push_back(one);
    if (!others.empty())
        check.findings.add(Kind::chain_order, flag::https_cert_chain_file,
                           "the issuers of the first certificate do not include certificate " +
                               listed(others),
                           "Remove what does not belong here, or insert the missing issuer.");
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

} // namespace

Certificates read_chain(const TlsCheck& check) {
    if (!check.files.chain) return {};
    const PemFile pem = read_pem(*check.files.chain);
    if (!has_what_is_wanted(pem, Content::certificate, *check.files.chain, flag::https_cert_chain_file,
                            *check.settings().cert_chain_file(), check.findings))
        return {};
    return certificates_in(pem, flag::https_cert_chain_file, check.findings);
}

bool key_matches(const TlsCheck& check, EVP_PKEY* key, const Certificates& chain) {
    const auto owner = std::find_if(chain.begin(), chain.end(),
                                    [key](const Certificate& one) { return has_key(one.get(), key); });
    ERR_clear_error();
    if (owner == chain.begin()) return true;
    if (owner == chain.end())
        check.findings.add(
            Kind::key_mismatch, flag::https_private_key_file, "the key belongs to none of the certificates",
            "Find the key that the certificate was requested with, or request a certificate for this key.");
    else
        check.findings.add(Kind::key_mismatch, flag::https_cert_chain_file,
                           "the key belongs to certificate " + std::to_string(owner - chain.begin() + 1) +
                               " of the file, but the server uses the first",
                           "Put the server's certificate first, and its issuers after it.");
    return false;
}

void look_at_issuers(const TlsCheck& check, const Certificates& chain, X509_STORE* store) {
    const Numbers path = issuers_in(chain);
    look_at_order(check, path, chain.size());
    X509* const last = chain[path.back()].get();
    if (is_self_signed(last)) {
        if (path.size() == 1)
            check.findings.add(
                Kind::certificate_self_signed, flag::https_cert_chain_file,
                "the server's certificate is its own issuer",
                "For clients that are not configured to trust it, get one from a certificate authority.");
        return;
    }
    if (knows_issuer(store, last)) return;
    const std::string address = address_of_issuer(last);
    check.findings.add(Kind::chain_incomplete, flag::https_cert_chain_file,
                       "the issuer of certificate " + std::to_string(path.back() + 1) + ", " +
                           text_of(X509_get_issuer_name(last)) +
                           ", is neither in the file nor trusted by this system",
                       "Append the issuer's certificate to the file." +
                           (address.empty() ? "" : " The issuer offers it at " + address + "."));
}

} // namespace orvane::preflight
