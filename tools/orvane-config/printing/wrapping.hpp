// Text of a width that people read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// As many columns as the terminal has, 100 at most, and no fewer than a line needs.
std::size_t text_width();

/// `text` after `indent` spaces, broken at spaces into lines of at most `width` columns where that is possible. Lines after
/// the first begin with `hanging` more spaces; `mark` ends those that go on. No line end follows the last.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t hanging = 0,
                    std::string_view mark = "", std::size_t width = text_width());

/// `head`, and beside it the text, from the column `indent` on. A head that reaches beyond that has a line for itself.
std::string beside(std::string_view head, std::string_view text, std::size_t indent);

} // namespace orvane
