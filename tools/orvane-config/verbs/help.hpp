// What the tool says of itself, made from the tables of verbs, options and exit codes.
#pragma once

#include "verbs/option_table.hpp"

#include <string>

namespace orvane {

/// Every verb.
std::string help_text();

/// One verb, and its options.
std::string help_text(const Verb& verb);

/// A manual page, up to the place where the server's flags follow.
std::string manual_head();

} // namespace orvane
