// Texts from outside, shown on one line.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// `text` with every control character as \u and four hexadecimal digits, so that it stays in its line and moves no
/// terminal's cursor.
std::string escape(std::string_view text);

} // namespace orvane
