// What the tool says of itself, made from the tables of verbs, options and exit codes.
#pragma once

#include "own/option_table.hpp"

#include <string>

namespace orvane {

inline constexpr std::string_view purpose =
    "Checks the Orvane server's command lines, and finds running servers.";
inline constexpr std::string_view where_options_go =
    "Options go before FLAGS, as --name VALUE or --name=VALUE; -- ends them. From the first flag on, "
    "everything is passed to the library unchanged.";

/// How the verb is called.
std::string synopsis_of(const Verb& verb);

/// What it does: the summary as a sentence, and what follows it.
std::string meaning(const Verb& verb);

/// For a call without arguments.
std::string short_help();

/// Every verb: one screen.
std::string help_text();

/// One verb, its options and its exit codes.
std::string help_text(const Verb& verb);

} // namespace orvane
