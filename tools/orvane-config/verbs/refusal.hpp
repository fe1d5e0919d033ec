// The first step of verbs that use the settings of a line: accepting or refusing it.
#pragma once

#include "explaining/verdict.hpp"
#include "verbs/call.hpp"

#include <optional>

namespace orvane {

/// As `check` ends.
ExitCode verdict_code(const Call& call, const Verdict& verdict);

/// How the verb ends when the server would refuse the line, or --strict finds a warning; the answer is then what `check` says.
/// Of a line that is accepted, it repeats only what the library says.
std::optional<ExitCode> refusal(const Call& call, const Verdict& verdict);

} // namespace orvane
