// Which occurrences of an accepted line have no effect, and why.
#pragma once

#include "probing/effects.hpp"

namespace orvane {

/// A line that gives the same record, and of which any occurrence can be left out: none follows the one flag that limits
/// what may follow. What had to go moves to `redundant`.
CommandLine loosened(const CommandLine& line, std::vector<Redundant>& redundant);

/// Fills `redundant` and `effective`. Costs a parse of the line for each occurrence.
Effects find_redundant(const CommandLine& line, const Answer& accepted);

} // namespace orvane
