// Certificates as Windows reads them.
#pragma once

#include "preflight/tls/certificate_facts.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include <wincrypt.h>

namespace orvane::preflight {

struct ReleasesCertificate {
    void operator()(const CERT_CONTEXT* certificate) const { CertFreeCertificateContext(certificate); }
};
using Certificate = std::unique_ptr<const CERT_CONTEXT, ReleasesCertificate>;
using Certificates = std::vector<Certificate>;

/// Null: it is damaged.
Certificate certificate_in(std::string_view der);

Validity validity_of(const CERT_CONTEXT* certificate);

/// What the private key has as well: the numbers of RSA, or the point of a curve.
std::string public_part(const CERT_CONTEXT* certificate);

/// What the rules ask about the chain, as long as it and the authorities are there.
ChainFacts facts_of(const Certificates& chain, const Certificates& ca);

} // namespace orvane::preflight
