// What preflight finds, for the verbs that ask for it.
#pragma once

#include "explaining/verdict.hpp"
#include "preflight/report.hpp"
#include "verbs/call.hpp"

#include <vector>

namespace orvane {

/// The ids of findings that --ignore can turn off: whatever would not stop the server.
WarningIds findings_to_ignore();

/// Looks at the machine for an accepted line, at the groups that the options choose. Throws Misused.
preflight::Report preflight_report(const Call& call, const Verdict& verdict, const WarningIds& ignored = {});

/// Of a line that is refused.
preflight::Report nothing_looked_at();

/// Leaves out what is ok. Returns whether there is more.
bool keep_problems(preflight::Report& report);

/// The warnings but those that a finding of the same id says again, and better.
std::vector<Warning> not_repeated(std::vector<Warning> warnings, const preflight::Report& report);

} // namespace orvane
