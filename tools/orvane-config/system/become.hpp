// The program that takes the tool's place.
#pragma once

#include "text/tokens.hpp"

#include <iosfwd>

namespace orvane {

/// Makes this process the command, with the same descriptors and signals. On Windows, where a process cannot become another,
/// waits for the command and returns its exit code. Returns 127 when there is no such command and 126 when it cannot be
/// started, as shells do, and says why.
int become(const Tokens& command, std::ostream& err);

} // namespace orvane
