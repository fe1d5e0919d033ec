// The checks of keys, certificates and what is offered, in the order in which tls_checks.cpp makes them.
#pragma once

#include "preflight/tls/certificate_facts.hpp"
#include "preflight/tls/openssl.hpp"
#include "preflight/tls/pem.hpp"
#include "preflight/tls/tls_check.hpp"

namespace orvane::preflight {

/// The server's key; null when it does not open, which is a finding.
Key open_key(const TlsCheck& check);

/// The certificates of a file, up to the first that is damaged, which is a finding.
Certificates certificates_in(const PemFile& pem, std::u16string_view flag, Findings& findings);

/// The server's certificates, the server's own first.
Certificates read_chain(const TlsCheck& check);

/// What the rules ask about the chain, as long as it and the store are there.
ChainFacts facts_of(const Certificates& chain, X509_STORE* store);
Validity validity_of(const X509* certificate);

/// The first certificate with this key; their number: there is none.
std::size_t owner_of(EVP_PKEY* key, const Certificates& chain);

/// The certificates of the authorities that clients are verified against.
Certificates read_ca(const TlsCheck& check);
void look_at_revocation_lists(const TlsCheck& check, const Certificates& ca);

/// The system's store if it is there, as far as it matters for the chain; `required`: that it is missing is a finding.
CertificateStore system_store(const TlsCheck& check, const Certificates& chain, bool required);

/// Adds those that may have issued one of the chain: a store takes time for each that squares with their number.
void add_issuers(X509_STORE* store, const Certificates& certificates, const Certificates& chain);

/// What clients would get from a server with these settings, at the security level of the list of ciphers.
void show_client_view(const TlsCheck& check, SSL_CTX* server);

/// Ciphers, protocols, curve and Diffie-Hellman parameters, each as such and all together.
void look_at_offer(const TlsCheck& check, EVP_PKEY* key, const Certificates& chain);

} // namespace orvane::preflight
