// The warnings that were not wanted.
#pragma once

#include "explaining/warnings.hpp"
#include "verbs/call.hpp"

namespace orvane {

/// Those of --ignore. Throws Misused when one of them is no kind of warning, and not among the verb's `others`.
WarningIds ignored_warnings(const Call& call, const WarningIds& others = {});

} // namespace orvane
