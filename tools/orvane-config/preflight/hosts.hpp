// The hosts that flags name.
#pragma once

#include "preflight/findings.hpp"
#include "system/network.hpp"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvane::preflight {

/// Long enough to ask a second name server, as systems do after five seconds.
inline constexpr std::chrono::seconds longest_look_up(6);

/// Looks up each host once. All look-ups together have a limit: a name server that is silent is silent for every name.
class Hosts {
public:
    /// The addresses of the host; without any, says so to `findings`.
    std::vector<std::string> addresses_of(const std::u16string& host, std::u16string_view flag,
                                          std::size_t position, Findings& findings);

private:
    /// None when there was no answer in time.
    std::optional<LookUp> find(const std::u16string& host);

    std::chrono::milliseconds left_ = longest_look_up;
    std::map<std::u16string, std::optional<LookUp>> known_{};
};

/// "127.0.0.1:9910", "[::1]:9910".
std::string with_port(const std::string& address, unsigned port);

/// Whether two listeners on the same port cannot have these addresses.
bool exclude_each_other(const std::string& one, const std::string& other);

/// The texts with commas between, at most the first few.
std::string listed(const std::vector<std::string>& texts);

} // namespace orvane::preflight
