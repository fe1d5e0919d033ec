// What is asked about certificates, whichever library reads them.
#pragma once

#include "preflight/tls/tls_check.hpp"

#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvane::preflight {

struct Validity {
    std::optional<std::time_t> begin{}, end{}; ///< none: the certificate has an invalid time
};

struct CertificateFacts {
    Validity validity{};
    std::vector<std::string> hosts{}; ///< DNS names
    bool is_self_signed = false, is_for_servers = false, is_for_issuing = false;
    std::string issuer{};         ///< its name as one line
    std::string issuer_address{}; ///< where its certificate can be got; empty: not said
    int key_bits = 0;
    bool has_weak_key = false;
    std::string uncommon_key{}; ///< of a type or curve that not every client takes; empty: all do
    std::string weak_digest{};  ///< of the signature; empty: it is not weak
};

/// The certificates of a file, the server's own first. They are counted from 0.
struct ChainFacts {
    std::vector<CertificateFacts> certificates{};
    std::function<bool(std::size_t one, std::size_t issuer)> is_issued_by{};
    std::function<bool(std::size_t one)>
        is_issuer_known{}; ///< to this system, or among the given authorities
    std::function<bool(const std::string& host)> is_for_host{};
};

/// Names, uses, times, sizes and signatures.
void look_at_certificates(const TlsCheck& check, const ChainFacts& chain);

/// Whether the issuers are there, in order, up to one that is known.
void look_at_issuers(const TlsCheck& check, const ChainFacts& chain);

/// Whether the key belongs to the first of `count` certificates; `owner` is the one that it belongs to, or `count`.
bool key_matches(const TlsCheck& check, std::size_t owner, std::size_t count);

/// How many of the authorities' certificates are valid now.
void look_at_ca_times(const TlsCheck& check, std::size_t valid, std::size_t count);
bool is_valid_now(const Validity& validity);

/// Not longer than a line that can be read.
std::string cut_name(const std::string& name);

} // namespace orvane::preflight
