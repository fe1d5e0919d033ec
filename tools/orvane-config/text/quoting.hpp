// Tokens as one would type them.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// As one would type it in a shell of this system, what cannot be seen in it escaped.
std::string shown(const std::u16string& token);

/// What continues a command on the next line there.
std::string_view continuation();

} // namespace orvane
