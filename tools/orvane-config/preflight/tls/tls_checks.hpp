// The checks of keys, certificates and what is offered, in the order in which tls_checks.cpp makes them.
#pragma once

#include "preflight/tls/openssl.hpp"
#include "preflight/tls/tls_check.hpp"

namespace orvane::preflight {

/// The server's key; null when it does not open, which is a finding.
Key open_key(const TlsCheck& check);

/// The server's certificates, the server's own first.
Certificates read_chain(const TlsCheck& check);

/// Whether key and first certificate belong together.
bool key_matches(const TlsCheck& check, EVP_PKEY* key, const Certificates& chain);

/// The certificates of the authorities that clients are verified against.
Certificates read_ca(const TlsCheck& check);
void look_at_revocation_lists(const TlsCheck& check, const Certificates& ca);

/// The system's store if it is there, as far as it matters for the chain; `required`: that it is missing is a finding.
CertificateStore system_store(const TlsCheck& check, const Certificates& chain, bool required);

/// Adds those that may have issued one of the chain: a store takes time for each that squares with their number.
void add_issuers(X509_STORE* store, const Certificates& certificates, const Certificates& chain);

/// The times of a certificate, which `what` names at the beginning of the texts.
void look_at_times(const TlsCheck& check, std::u16string_view flag, const X509* certificate,
                   const std::string& what);

/// Whether the issuers are there, in order, up to one that `store` knows.
void look_at_issuers(const TlsCheck& check, const Certificates& chain, X509_STORE* store);

/// Names, uses, times, sizes and signatures.
void look_at_certificates(const TlsCheck& check, const Certificates& chain);

/// What clients would get from a server with these settings, at the security level of the list of ciphers.
void show_client_view(const TlsCheck& check, SSL_CTX* server);

/// Ciphers, protocols, curve and Diffie-Hellman parameters, each as such and all together.
void look_at_offer(const TlsCheck& check, EVP_PKEY* key, const Certificates& chain);

} // namespace orvane::preflight
