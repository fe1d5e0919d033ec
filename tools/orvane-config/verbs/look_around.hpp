// What preflight finds, for the verbs that ask for it.
#pragma once

#include "printing/preflight_json.hpp"
#include "verbs/call.hpp"

namespace orvane {

/// Looks at the machine for an accepted line, at the groups that the options choose. Throws Misused.
readiness::Report look_around(const Call& call, const Verdict& verdict);

} // namespace orvane
