// Where the server's flags come from.
#pragma once

#include "verbs/options.hpp"

namespace orvane {

/// take_options() with one option more, which names a file for the flags to be read from ("-" is standard input): a
/// token a line, or each ended by a zero byte when there is one. Returns those, or without the option the rest of `args`.
/// Throws std::runtime_error when the file cannot be read.
std::optional<Tokens> take_flags(CLI::App& app, const Tokens& args, std::ostream& out, std::ostream& err,
                                 ExitCode& code);

} // namespace orvane
