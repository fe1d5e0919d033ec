// Words of a POSIX shell's command line.
#pragma once

#include <string>

namespace orvane {

/// The token, UTF-8, as every POSIX shell reads it back.
std::string sh_word(const std::string& token);

} // namespace orvane
