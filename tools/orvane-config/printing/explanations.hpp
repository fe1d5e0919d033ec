// What the kinds of faults, rules, warnings and findings mean: for people, as a document, for programs.
#pragma once

#include "explaining/kinds.hpp"

#include <iosfwd>
#include <string_view>
#include <vector>

namespace orvane {

/// In the format of that name: text, markdown or json. Where `all`, markdown is a page with headings.
void write(const std::vector<Explanation>& kinds, std::string_view format, bool all, std::ostream& out);

} // namespace orvane
