// What to tell an operator about a refusal, and what to put in its place.
#pragma once

#include "probing/probing.hpp"

#include <string>
#include <vector>

namespace orvane {

struct Advice {
    std::vector<std::string> sentences{};
    /// The flags that were probably meant, the likeliest first.
    std::vector<std::string> suggestions{};
    Edit repair{};
};

/// About the fault at a occurrence of the line; at its end, when the line as a whole is refused.
Advice advise(const Fault& fault, const CommandLine& line, std::size_t position);

} // namespace orvane
