// What preflight found, for people.
#pragma once

#include "preflight/report.hpp"

#include <string>

namespace orvane::preflight {

/// The findings by group, those about one occurrence together, and a summary.
std::string to_text(const Report& report);

} // namespace orvane::preflight
