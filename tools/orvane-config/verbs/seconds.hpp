// Options that take a time.
#pragma once

#include "verbs/call.hpp"

namespace orvane {

/// About 30 years: in nanoseconds, it fits into a clock's number.
inline constexpr double longest_wait = 1e9;

/// Throws Misused when the option's value is no number of seconds.
double seconds_in(const Call& call, const OwnOption& option, const std::string& otherwise);

} // namespace orvane
