// Text for manual pages.
#include "printing/roff.hpp"

namespace orvane {

std::string roff(std::string_view text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '-' ? "\\-" : c == '\\' ? "\\e" : c == '\'' ? "\\(aq" : std::string(1, c);
    return escaped;
}

} // namespace orvane
