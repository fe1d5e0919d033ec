// Several files that are several configurations.
#pragma once

#include "verbs/call.hpp"

namespace orvane {

/// Whether the call names at most one file, and no directory, without an option.
bool is_one_configuration(const Call& call);

/// A line for each file, then what `verb` says about those that are not fine; in JSON one object. The worst exit code.
ExitCode check_each(const Call& call, verb::Run& verb);

} // namespace orvane
