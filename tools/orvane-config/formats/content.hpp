// The content of files and of standard input.
#pragma once

#include <string>

namespace orvane {

/// As UTF-8 without a byte-order mark; "-" is standard input. Throws std::runtime_error when it cannot be read, or has no
/// end.
std::string content_of(const std::string& name);

} // namespace orvane
