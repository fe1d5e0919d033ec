// What is said of a private key, whoever opens it.
#pragma once

#include "preflight/tls/tls_check.hpp"

#include <chrono>
#include <string>
#include <vector>

namespace orvane::preflight {

/// The file says how often its pass phrase is hashed, and may say anything.
inline constexpr std::chrono::seconds opening_limit(3);

/// Most servers take the first line; some take the file as it is.
std::vector<std::string> phrases_in(const std::string& text);

void report_damaged_key(const TlsCheck& check, const std::string& reason);
/// It is encrypted, and no pass phrase opens it.
void report_locked_key(const TlsCheck& check);
void report_slow_key(const TlsCheck& check);
/// It is open, and was not encrypted.
void report_unused_passphrase(const TlsCheck& check);

} // namespace orvane::preflight
