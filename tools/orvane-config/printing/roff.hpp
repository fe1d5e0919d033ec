// Text for manual pages.
#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// No character of it is taken for a request.
std::string roff(std::string_view text);

/// A command and what it is for.
std::string roff_example(std::string_view what, std::string_view command);

/// As the heading of a section is written.
std::string roff_title(std::string_view text);

} // namespace orvane
