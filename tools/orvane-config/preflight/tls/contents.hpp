// The looks at keys, certificates and what is offered, in the order in which contents.cpp takes them.
#pragma once

#include "preflight/tls/look.hpp"
#include "preflight/tls/openssl.hpp"

namespace orvane::readiness {

/// The server's key; null when it does not open, which is a finding.
Key open_key(const TlsLook& look);

/// The server's certificates, the server's own first.
Certificates read_chain(const TlsLook& look);

/// Whether key and first certificate belong together.
bool key_matches(const TlsLook& look, EVP_PKEY* key, const Certificates& chain);

/// The certificates that clients are verified against, and what knows them.
Certificates read_ca(const TlsLook& look);
void look_at_revocation_lists(const TlsLook& look, const Certificates& ca);

/// The system's store if it is there; `required`: that it is missing is a finding.
CertificateStore system_store(const TlsLook& look, bool required);

/// The times of a certificate; with `what` the texts begin.
void look_at_times(const TlsLook& look, std::u16string_view flag, const X509* certificate,
                   const std::string& what);

/// Issuers and their order. Takes note of no issuer that `store` knows.
void look_at_issuers(const TlsLook& look, const Certificates& chain, X509_STORE* store);

/// Names, uses, times, sizes and signatures.
void look_at_certificates(const TlsLook& look, const Certificates& chain);

/// Ciphers, protocols, curve and Diffie-Hellman parameters, each as such and all together.
void look_at_offer(const TlsLook& look, EVP_PKEY* key, const Certificates& chain);

} // namespace orvane::readiness
