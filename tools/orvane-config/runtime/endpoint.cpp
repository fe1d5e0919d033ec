// A host and a port, as files and options have them.
#include "runtime/endpoint.hpp"

#include <charconv>
#include <system_error>

namespace orvane {

unsigned number_in(std::string_view text, unsigned largest) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value <= largest ? value : 0;
}

std::optional<Endpoint> endpoint_in(std::string_view text) {
    const auto colon = text.rfind(':');
    if (colon == std::string_view::npos) return std::nullopt;
    std::string_view host = text.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
    const unsigned port = number_in(text.substr(colon + 1), 65535);
    if (host.empty() || port == 0) return std::nullopt;
    return Endpoint{std::string(host), static_cast<unsigned short>(port)};
}

} // namespace orvane
