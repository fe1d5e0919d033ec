// The first step of verbs that use the settings of a line: accepting or refusing it.
#pragma once

#include "explaining/verdict.hpp"
#include "verbs/call.hpp"

#include <cstddef>
#include <optional>
#include <string>

namespace orvane {

/// As `check` ends.
ExitCode verdict_code(const Call& call, const Verdict& verdict);

/// What is said of a line that is accepted, with a code, and warnings.
std::string acceptance(ExitCode code, std::size_t warnings);

/// How the verb ends when the server would refuse the line, or --strict finds a warning; the answer is then what `check` says.
/// Of a line that is accepted, it repeats only what the library says.
std::optional<ExitCode> refusal(const Call& call, const Verdict& verdict);

} // namespace orvane
