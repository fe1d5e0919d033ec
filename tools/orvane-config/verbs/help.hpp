// What the tool says of itself, made from the tables of verbs, options and exit codes.
#pragma once

#include "verbs/option_table.hpp"

#include <string>

namespace orvane {

/// For a call without arguments.
std::string short_help();

/// Every verb: one screen.
std::string help_text();

/// One verb, its options and its exit codes.
std::string help_text(const Verb& verb);

/// A manual page, up to the place where the server's flags follow.
std::string manual_head();

} // namespace orvane
