// The space in the directories that the server fills.
#pragma once

#include "preflight/findings.hpp"

namespace orvane::preflight {

void look_at_space(const Context& context, Findings& findings);

} // namespace orvane::preflight
