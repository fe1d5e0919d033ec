// The files that the TLS flags name.
#pragma once

#include "preflight/findings.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::preflight {

/// What is in them; nothing where a flag was not given, or its file could not be read.
struct TlsFiles {
    std::optional<std::string> key, passphrase, chain, ca, dh_parameters;
};

/// Reads them. What is wrong with a file as such is a finding, whatever should be in it.
TlsFiles read_tls_files(const qel::config::SslContext& settings, Findings& findings);

/// A file that nobody but the server should read.
struct SecretFile {
    std::u16string_view flag;
    qel::config::Path path;
};

/// The key, the pass phrase, and any other that has a key in it. A pass phrase that names no file is left out: it may be
/// the pass phrase itself.
std::vector<SecretFile> secret_files(const qel::config::SslContext& settings);

} // namespace orvane::preflight
