// Everything that the tool finds wrong, by kinds: each has an id that does not change.
#pragma once

#include "probing/diagnosis.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct Explanation {
    std::string_view about; ///< fault, rule, warning, hazard or finding
    std::string id;
    std::string summary;
    std::string cause{};
    std::string example{}, fix{}; ///< lines after the required flag, in a shell's notation; may be empty
};

/// Faults, rules, warnings, hazards and findings, in this order; each in the order in which they are looked for.
const std::vector<Explanation>& all_kinds();

/// Of what the library refuses while parsing.
std::string_view id_of(const Fault& fault);

/// Of what it refuses afterwards, by its text.
std::string_view id_of(const std::u16string& problem);

} // namespace orvane
