// The protocols that a list names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane::preflight {

enum ProtocolBit : unsigned { ssl2 = 1, ssl3 = 2, tls1_0 = 4, tls1_1 = 8, tls1_2 = 16, tls1_3 = 32 };

struct ProtocolList {
    unsigned offered = 0; ///< bits
    std::vector<std::string> unknown{};
};

/// In order: a name adds, and one after ! or - takes away.
ProtocolList read_protocols(std::string_view list);

/// The name after what switches it on or off.
std::string name_in(std::string_view item);

} // namespace orvane::preflight
