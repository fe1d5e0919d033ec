// The companion tool.
#pragma once

#include "own/exit_code.hpp"
#include "text/tokens.hpp"

#include <iosfwd>

namespace orvane {

/// Runs the tool with `args`: answers go to `out`, diagnostics to `err`, each in one piece unless a
/// verb waits in between.
ExitCode run(const Tokens& args, std::ostream& out, std::ostream& err);

} // namespace orvane
