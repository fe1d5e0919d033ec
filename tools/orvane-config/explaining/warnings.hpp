// What is accepted and yet probably not meant.
#pragma once

#include "probing/effects.hpp"

#include <string>
#include <vector>

namespace orvane {

struct Warning {
    std::size_t token; ///< the number of the token that it is about
    std::string text;
};

/// In the order of the tokens. `effects` are those of the accepted line.
std::vector<Warning> warnings_of(const CommandLine& line, const Effects& effects);

} // namespace orvane
