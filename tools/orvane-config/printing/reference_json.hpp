// The reference of the flags for other programs.
#pragma once

#include "reference/reference.hpp"

#include <string>
#include <vector>

namespace orvane {

std::string reference_json(const std::vector<const Reference*>& flags);

} // namespace orvane
