// Where the server's flags come from.
#pragma once

#include "verbs/call.hpp"

#include <optional>

namespace orvane {

/// What a verb that takes FLAGS works on.
struct Input {
    Tokens flags;
    std::optional<Tokens> command; ///< after the --, for a verb that takes a COMMAND
};

/// From the command line, or from the file that --from names: a token a line, or each ended by a zero byte when there is
/// one; "-" is standard input. Throws Misused, and std::runtime_error when the file cannot be read.
Input input_of(const Call& call);

} // namespace orvane
