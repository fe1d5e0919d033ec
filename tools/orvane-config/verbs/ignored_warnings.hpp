// The warnings that were not wanted.
#pragma once

#include "explaining/warnings.hpp"
#include "verbs/call.hpp"

namespace orvane {

/// Those of --ignore. Throws Misused when one of them is no kind of warning.
WarningIds ignored_warnings(const Call& call);

} // namespace orvane
