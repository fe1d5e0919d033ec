// Occurrences as one would type them.
#pragma once

#include "probing/probing.hpp"

#include <string>

namespace orvane {

std::string shown(const Occurrence& occurrence);

/// "token 5", "tokens 5 and 6".
std::string numbers_of(const Occurrence& occurrence);

} // namespace orvane
