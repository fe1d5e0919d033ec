// The ports that a server takes.
#pragma once

#include "preflight/hosts.hpp"

#include <string>
#include <vector>

namespace orvane::preflight {

/// A port that the server is told to take.
struct PortUse {
    std::u16string_view flag;
    std::size_t position; ///< of the occurrence, as in Finding
    unsigned port;
    /// Where, the first being the address that it takes if it takes only one. Empty: the host has none.
    std::vector<std::string> addresses;
};

/// Those of the listeners and of the control interface.
std::vector<PortUse> ports_of_listeners(const Context& context, Hosts& hosts, Findings& findings);

/// Tries the port on the address. One that is free only when another server has ended says so in `why`.
BindTrial try_port(const PortUse& use, const std::string& address, const Context& context);

/// Whether the port could be taken; if not, says so to `findings`.
bool can_be_taken(const PortUse& use, const std::string& address, const BindTrial& trial,
                  const Context& context, Findings& findings);

/// Reports the first of the earlier uses that excludes this one.
void compare(const PortUse& use, const std::vector<PortUse>& earlier, const Context& context,
             Findings& findings);

} // namespace orvane::preflight
