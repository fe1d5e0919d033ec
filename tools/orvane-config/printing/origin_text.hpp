// Where settings come from, for people.
#pragma once

#include "explaining/verdict.hpp"

#include <iosfwd>
#include <string_view>

namespace orvane {

/// Writes the lines of a setting, each after the mark, and at the last one the flags that it comes from.
void print_with_origin(std::string_view mark, const Setting& setting, const Verdict& verdict,
                       std::ostream& out);

} // namespace orvane
