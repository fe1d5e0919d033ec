// A shorter line that means the same.
#pragma once

#include "probing/effects.hpp"

namespace orvane {

/// The line of these effects without the occurrences that have none, in the order of the reference where that gives an
/// equal record, else in the order in which it was given. Empty if even that gives another record.
std::optional<CommandLine> tidied(const CommandLine& line, const Answer& accepted, const Effects& effects);

} // namespace orvane
