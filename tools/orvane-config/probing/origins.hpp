// Which occurrences of an accepted line decide its settings.
#pragma once

#include "probing/effects.hpp"

namespace orvane {

/// Fills `origins` and `completed` of effects that have an effective line. Costs some parses of it for each occurrence.
void find_origins(Effects& effects, const Answer& accepted);

} // namespace orvane
