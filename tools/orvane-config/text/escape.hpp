// Texts from outside, shown where they can do no harm.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// `text` with every control character as its code, so that it stays in its line and moves no
/// terminal's cursor.
std::string escape(std::string_view text);

/// Begin and end the marked place in coloured diagnostics.
inline constexpr std::string_view mark_begin = "\033[1;31m", mark_end = "\033[0m";

/// `text`, of any number of lines, for a terminal: everything invisible in it is escaped, except these marks.
std::string escape_for_terminal(std::string_view text);

} // namespace orvane
