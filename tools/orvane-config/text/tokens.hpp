// A command line as the system hands it over, the program's own name not included.
#pragma once

#include <deque>
#include <string>

namespace orvane {

using Tokens = std::deque<std::u16string>;

} // namespace orvane
