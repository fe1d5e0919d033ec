// Reading a severity from text.
#pragma once

#include "qel/logging/severity_level.hpp"

#include <iosfwd>

namespace qel::logging {

/// Reads one word and looks it up among the names, exactly. No match sets the fail bit and leaves `level`
/// unchanged.
std::istream& operator>>(std::istream& in, severity_level& level);

} // namespace qel::logging
