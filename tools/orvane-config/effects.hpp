// What each step of an accepted line does, learnt by leaving it out.
#pragma once

#include "asking.hpp"
#include "record_text.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvane {

/// A step without which the record is the same, because of other steps.
struct Redundant {
    Step step{};
    std::optional<Step> replaced_by{}; ///< without this one it would count
    bool needs_https = false;          ///< with a listener for TLS it would count
};

/// What the steps of an accepted line do.
struct Effects {
    std::vector<Redundant> redundant;
    Line effective;                                   ///< the line without them; it gives an equal record
    std::map<std::string, std::vector<Step>> origins; ///< by setting: the steps without which it is another
    std::set<std::string> completed; ///< the settings to which the library adds at the end of the line
};

/// `origins` and `completed` are filled when asked for. Costs a parse of the line for each step, twice with origins.
Effects effects_of(const Line& line, const Answer& accepted, bool with_origins);

} // namespace orvane
