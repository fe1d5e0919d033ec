// What preflight finds, for the verbs that ask for it.
#pragma once

#include "explaining/verdict.hpp"
#include "preflight/report.hpp"
#include "verbs/call.hpp"

namespace orvane {

/// The ids of findings that --ignore can turn off: whatever would not stop the server.
WarningIds findings_to_ignore();

/// Looks at the machine for an accepted line, at the groups that the options choose. Throws Misused.
preflight::Report preflight_report(const Call& call, const Verdict& verdict, const WarningIds& ignored = {});

} // namespace orvane
