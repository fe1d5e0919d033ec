// Which occurrences of an accepted line decide its settings.
#pragma once

#include "probing/effects.hpp"

namespace orvane {

/// The positions of the settings that the occurrence at `at` decides. `settings` are those of the line.
std::set<std::size_t> decided_by(const CommandLine& line, std::size_t at,
                                 const std::vector<Setting>& settings);

/// Fills `origins` and `completed` of effects that have an effective line. Costs some parses of it for each occurrence.
void find_origins(Effects& effects, const Answer& accepted);

} // namespace orvane
