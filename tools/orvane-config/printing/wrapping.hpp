// Text of a width that people read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// Where nothing says how wide the terminal is.
inline constexpr std::size_t usual_width = 100;

/// `text` after `indent` spaces, broken at spaces into lines of at most `width` columns where that is possible. Lines after
/// the first begin with `hanging` more spaces; `mark` ends those that go on. No line end follows the last.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t hanging = 0,
                    std::string_view mark = "", std::size_t width = usual_width);

} // namespace orvane
