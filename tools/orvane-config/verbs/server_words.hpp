// Where the server's own words begin in a command line.
#pragma once

#include "explaining/verdict.hpp"
#include "formats/format.hpp"

#include <cstddef>

namespace orvane {

/// A first token that is no flag, before flags. `before` comes from other files.
bool begins_with_program(const Tokens& before, const Tokens& tokens);

/// How many words are before the server's program, or a call of this tool, as in: sudo -u web nice orvane --wait. None if one of
/// them may be a flag. Throws NotUnderstood if the program may be the value of an option.
std::size_t words_before_server(const ReadTokens& tokens);

} // namespace orvane
