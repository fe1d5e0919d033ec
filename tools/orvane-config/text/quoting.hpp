// Tokens as one would type them.
#pragma once

#include <string>

namespace orvane {

/// As one would type it in a shell, what cannot be seen in it escaped.
std::string shown(const std::u16string& token);

} // namespace orvane
