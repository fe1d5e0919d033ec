// NAME=value on a line of its own.
#pragma once

#include "formats/format.hpp"

#include <cstddef>
#include <string>

namespace orvane {

/// Where it is in the text.
struct Assignment {
    std::string name; ///< as it is written, perhaps with blanks around it
    std::size_t begin = 0, value = 0, end = 0;
    char quote = 0; ///< around the value
};

/// Moves to the next line that is neither blank nor a comment. False: there is none.
bool skip_to_assignment(Walk& walk);

/// Moves to the end of its value. False: this is none.
bool skip_assignment(Walk& walk, Assignment& one, bool may_export);

} // namespace orvane
