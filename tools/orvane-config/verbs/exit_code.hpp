// How the tool ends.
#pragma once

#include <string_view>

namespace orvane {

/// Of a row of a table: for all verbs that take the server's flags.
inline constexpr std::string_view any_flags = "FLAGS";

/// What scripts can rely on. `publish` and `exec` also end with the exit codes of their commands.
enum class ExitCode {
    done = 0,
    refused = 1,
    misused = 2,
    warned = 3,
    not_published = 4,
    stale_or_malformed = 5,
    timed_out = 6,
    failed_io = 7,
    not_ready = 8,
};

struct ExitMeaning {
    ExitCode code;
    std::string_view verbs; ///< as in the table of options
    std::string_view meaning;
};

// clang-format off
inline constexpr ExitMeaning exit_codes[] = {
    {ExitCode::done,               "",                                      "accepted, located, equal or done"},
    {ExitCode::refused,            "check show fix convert preflight exec", "refused by the library"},
    {ExitCode::refused,            "locate publish",                        "refused by the library, or by the state of the server's files"},
    {ExitCode::refused,            "diff",                                  "the settings differ"},
    {ExitCode::misused,            "",                                      "orvane-config was used wrongly"},
    {ExitCode::misused,            "diff",                                  "a line is refused or cannot be read"},
    {ExitCode::warned,             "check preflight",                       "accepted, but --strict found a warning"},
    {ExitCode::warned,             "fix",                                   "corrected, except that you have to replace a <value>"},
    {ExitCode::not_published,      "locate",                                "not published, or not yet"},
    {ExitCode::not_published,      "show",                                  "the setting that --get names is not set"},
    {ExitCode::stale_or_malformed, "locate",                                "published, but stale or malformed"},
    {ExitCode::timed_out,          "locate",                                "timed out waiting"},
    {ExitCode::failed_io,          "",                                      "input or output failed"},
    {ExitCode::not_ready,          "preflight exec",                        "on this machine the server would not start with these flags, or preflight cannot tell"},
};
// clang-format on

struct CommandCode {
    std::string_view verb, meaning;
};

/// How verbs end that pass on the exit code of a command.
inline constexpr CommandCode command_codes[] = {
    {"publish",
     "'publish' ends with the exit code of COMMAND, or with 128 plus the number of the signal that "
     "ended it; without COMMAND, with 0 after the signals INT and TERM."},
    {"exec", "'exec' ends as COMMAND does, or with 127 if there is no such command, or 126 if it cannot be "
             "started."},
};

} // namespace orvane
