// The tool's own options, which stand before the first flag of the server.
#pragma once

#include "verbs/tool.hpp"

#include <CLI/CLI.hpp>

#include <optional>

namespace orvane {

/// Takes the options that `app` knows from the front of `args` and returns the rest: everything from the
/// first token on that is none of them. Without a value, what there was to say has been written (a fault, or
/// the help that was asked for) and `code` says how the tool ends.
std::optional<Tokens> take_options(CLI::App& app, const Tokens& args, std::ostream& out, std::ostream& err,
                                   ExitCode& code);

/// Says on `err` how the tool was misused.
ExitCode misused(const CLI::App& app, const std::string& fault, std::ostream& err);

} // namespace orvane
