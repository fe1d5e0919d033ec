// Which settings a flag is about.
#pragma once

#include "reference/reference.hpp"

#include <string>
#include <vector>

namespace orvane {

/// The names of the settings that depend on the flag in its example, as `check --all` prints them.
std::vector<std::string> settings_of_flag(const Reference& reference);

} // namespace orvane
