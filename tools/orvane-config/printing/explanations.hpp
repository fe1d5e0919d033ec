// What the kinds of faults, rules, warnings and findings mean: for people, and as a document.
#pragma once

#include "explaining/kinds.hpp"

#include <iosfwd>
#include <string_view>
#include <vector>

namespace orvane {

/// In the format of that name: text or markdown. Where `all`, markdown is a page with headings.
void write(const std::vector<Explanation>& kinds, std::string_view format, bool all, std::ostream& out);

} // namespace orvane
