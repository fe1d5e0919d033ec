// Text for manual pages.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// No character of it is taken for a request.
std::string roff(std::string_view text);

} // namespace orvane
