// The files that the TLS flags name.
#pragma once

#include "preflight/findings.hpp"

#include <optional>
#include <string>

namespace orvane::preflight {

/// What is in them; nothing where a flag was not given, or its file could not be read.
struct TlsFiles {
    std::optional<std::string> key, passphrase, chain, ca, dh_parameters;
};

/// Reads them. What is wrong with a file as such is a finding, whatever should be in it.
TlsFiles read_tls_files(const qel::config::SslContext& settings, Findings& findings);

} // namespace orvane::preflight
