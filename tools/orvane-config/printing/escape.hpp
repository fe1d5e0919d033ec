// Texts from outside, shown where they can do no harm.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// `text` with every control character as \u and four hexadecimal digits, so that it stays in its line and moves no
/// terminal's cursor.
std::string escape(std::string_view text);

/// What begins and ends the mark of a place in diagnostics that are in colour.
inline constexpr std::string_view mark_begin = "\033[1;31m", mark_end = "\033[0m";

/// Whether they are: on a terminal that can, and whose user has not asked for none.
bool errors_in_colour();

/// `text`, of any number of lines, for a terminal: everything in it that cannot be seen is escaped, but for these marks.
std::string escape_for_terminal(std::string_view text);

} // namespace orvane
