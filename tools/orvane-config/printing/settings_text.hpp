// Settings and where they come from, for people.
#pragma once

#include "explaining/verdict.hpp"

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {

/// Writes `name = value`, without ending the line. Control characters are written as \u and four hexadecimal digits,
/// so that a value never leaves its line.
void print(const std::pair<std::string, std::string>& line, std::ostream& out);

/// Writes the lines of a setting, each after the mark, and at the last one the flags that it comes from.
void print_with_origin(std::string_view mark, const Setting& setting, const Verdict& verdict,
                       std::ostream& out);

} // namespace orvane
