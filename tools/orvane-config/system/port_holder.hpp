// Who listens on a port.
#pragma once

#include <string>
#include <vector>

namespace orvane {

struct PortHolder {
    std::string address; ///< numeric, as in network.hpp
    unsigned pid = 0;    ///< 0: the system does not tell this user
    std::string program{};
    std::string user{};  ///< its name, or its number without one; empty where the system does not tell
    unsigned parent = 0; ///< the process that started it, where the system tells
};

/// Whoever listens on the port, on any address of this machine; empty when the system does not tell.
std::vector<PortHolder> holders_of(unsigned short port);

/// The command that tells, and who may run it.
std::string how_to_find_the_holder(unsigned short port);

} // namespace orvane
