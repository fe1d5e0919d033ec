// A host and a port, as files and options have them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

struct Endpoint {
    std::string host; ///< without the brackets around an IPv6 address
    unsigned short port;
};

/// None when the text is not a host, a colon, and a port that can be connected to.
std::optional<Endpoint> endpoint_in(std::string_view text);

/// The whole text as a number from 1 to `largest`; else 0.
unsigned number_in(std::string_view text, unsigned largest);

} // namespace orvane
