// Settings that a file expects.
#pragma once

#include "probing/settings.hpp"
#include "verbs/call.hpp"

namespace orvane {

/// Compares the settings with the lines of the file that --expect names, as `check` and `check --all` print them, and says
/// on `call.err` which differ. What the file does not name is not compared. Returns whether all are as expected; throws
/// Misused when the file names none, or one that there is not.
bool is_as_expected(const Call& call, const std::vector<Setting>& settings);

} // namespace orvane
