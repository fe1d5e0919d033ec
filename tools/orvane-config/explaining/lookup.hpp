// What somebody asks about.
#pragma once

#include "explaining/kinds.hpp"
#include "reference/reference.hpp"

#include <string>
#include <vector>

namespace orvane {

/// What was found for some words; flags are in the order of the reference.
struct Lookup {
    std::vector<const Reference*> flags{};
    std::vector<Explanation> kinds{};
    std::vector<std::string> advice{};  ///< for settings that this server does not have
    std::vector<std::string> unknown{}; ///< the words that lead to nothing
};

/// Each word is a flag, with or without its hyphens, a setting of the record, another server's name for one, or an id. If one
/// of them is none of these, the flags are those whose texts have all the words; if there are none, the ids are.
Lookup look_up(const std::vector<std::u16string>& words);

} // namespace orvane
