// What an attacker would gain, for people.
#pragma once

#include "explaining/hazards.hpp"
#include "probing/source_places.hpp"

#include <string>
#include <vector>

namespace orvane {

/// "open", "weak", or "nothing found" where nothing was.
std::string worst_of(const std::vector<HazardLook>& looks);
bool has_weak(const std::vector<HazardLook>& looks);

/// What was found with its reasons, then what was looked at and found safe, and what was not looked at.
std::string to_text(const std::vector<HazardLook>& looks, const SourcePlaces& places);

} // namespace orvane
