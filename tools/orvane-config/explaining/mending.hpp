// An accepted line with the values that were meant.
#pragma once

#include "explaining/verdict.hpp"

namespace orvane {

/// Puts them into the line's tokens where a warning knows them for certain, and returns these warnings. The verdict is then
/// about the new line. What would make the server refuse the line stays as it is.
std::vector<Warning> mend(std::vector<Token>& tokens, Verdict& verdict, const WarningIds& ignored);

} // namespace orvane
