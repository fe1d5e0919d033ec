// The companion tool's verbs and exit codes.
#pragma once

#include <deque>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

using Tokens = std::deque<std::u16string>;

/// What scripts can rely on. `publish` also ends with the exit code of its command.
enum class ExitCode {
    done = 0,               ///< accepted, located, or done
    refused = 1,            ///< refused by the library, or by the state of things
    misused = 2,            ///< the tool was called in a way it does not understand
    warned = 3,             ///< accepted, but there are warnings, and they were to count
    not_published = 4,      ///< there is no such server, or not yet
    stale_or_malformed = 5, ///< there are files, but nothing to believe
    timed_out = 6,          ///< the server did not come in time
    failed_io = 7,          ///< input or output failed
};

/// Runs the tool with `args`, the program's own name not included: answers go to `out`, diagnostics to `err`.
ExitCode run(const Tokens& args, std::ostream& out, std::ostream& err);

/// What `help` prints.
std::string help_text();

/// The verbs that operators use.
std::vector<std::string> verb_names();

/// What the verb takes of the tool's own, apart by blanks: options, or words.
std::string_view own_options(std::string_view verb);

// The verbs. `args` is what stands behind the verb.

/// Parses and validates the server's flags.
ExitCode check(const Tokens& args, std::ostream& out, std::ostream& err);

/// The same, and shows every setting with its origin.
ExitCode show(const Tokens& args, std::ostream& out, std::ostream& err);

/// Prints the reference of the server's flags.
ExitCode flags(const Tokens& args, std::ostream& out, std::ostream& err);

/// Prints a script that teaches a shell to complete the flags.
ExitCode completions(const Tokens& args, std::ostream& out, std::ostream& err);

/// Reads the runtime files of the server with the given flags, and says how far they are to be believed.
ExitCode locate(const Tokens& args, std::ostream& out, std::ostream& err);

/// Publishes the runtime files of a server with the given flags while a command runs, or until a signal
/// comes.
ExitCode publish(const Tokens& args, std::ostream& out, std::ostream& err);

} // namespace orvane
