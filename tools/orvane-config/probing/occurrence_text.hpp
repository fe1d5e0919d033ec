// Occurrences as one would type them.
#pragma once

#include "probing/probing.hpp"
#include "probing/source_places.hpp"

#include <cstddef>
#include <string>

namespace orvane {

std::string shown(const Occurrence& occurrence);

/// "token 5", "tokens 5 and 6".
std::string numbers_of(const Occurrence& occurrence);

/// "token 5, unit.service:3:11: ", before what is said of it; nothing for 0.
std::string at_token(std::size_t number, const SourcePlaces& places);

} // namespace orvane
