// What this machine's network tells. Nothing listens here, and only `accepts_connections` contacts anyone; a name is
// looked up as every program does it.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace orvane {

/// An address is the system's numeric text for it: "127.0.0.1", "::1", "fe80::1%eth0".
struct LookUp {
    std::vector<std::string> addresses{};
    /// Why there are none, in the system's words.
    std::string why{};
};

/// The addresses of a name, in the system's order; an address is its own. It may take as long as a name server likes.
LookUp look_up(const std::u16string& host);

struct BindTrial {
    enum class Outcome {
        free,
        taken,     ///< somebody has the port
        forbidden, ///< not for this user
        not_here,  ///< the address belongs to no interface of this machine
        failed,
    } outcome;
    /// Why it failed, in the system's words.
    std::string why{};
};

/// Binds to the port as a server does, and releases it at once.
BindTrial try_to_bind(const std::string& address, unsigned short port);

/// Whether one of the addresses accepts a connection, which is closed at once; empty, or why none did.
std::string accepts_connections(const std::vector<std::string>& addresses, unsigned short port,
                                std::chrono::milliseconds patience);

/// The addresses of this machine's interfaces.
std::vector<std::string> own_addresses();

bool has_ipv6();

/// Whether a listener on "::" takes the port from IPv4 as well.
bool ipv6_includes_ipv4();

/// Ports below need a privilege; 0 when none does.
unsigned first_unprivileged_port();

/// How a server gets that privilege here.
std::string how_to_give_the_privilege();

} // namespace orvane
