// A row of the tables of faults, rules, warnings and hazards.
#pragma once

#include <string_view>

namespace orvane {

/// What `explain ID` says.
struct ExplainedKind {
    std::string_view id;
    std::string_view summary;
    std::string_view explanation;  ///< why, and what to do
    std::string_view example, fix; ///< as in warnings.def
};

} // namespace orvane
