// Command lines that can be shown to others.
#pragma once

#include "text/tokens.hpp"

#include <vector>

namespace orvane::redacting {

/// The lines with placeholders for paths, hosts, names and data, equal ones for equal ones in all of them. What the tool
/// finds in them is the same, or std::runtime_error is thrown.
std::vector<Tokens> redacted(const std::vector<Tokens>& lines);

} // namespace orvane::redacting
