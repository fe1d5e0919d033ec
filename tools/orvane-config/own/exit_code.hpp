// How the tool ends.
#pragma once

#include <string_view>

namespace orvane {

/// Of a row of a table: for all verbs that take the server's flags.
inline constexpr std::string_view any_flags = "FLAGS";

/// What scripts can rely on. `publish` and `exec` also end with the exit codes of their commands.
enum class ExitCode {
    done = 0,
    negative = 1, ///< the answer is no: refused, different, not corrected
    misused = 2,
    warned = 3,
    absent = 4, ///< what was asked for is not there
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
    {ExitCode::done,               "check",                                 "the server would accept FLAGS"},
    {ExitCode::done,               "fix",                                   "corrected, or nothing was wrong; warnings may be left"},
    {ExitCode::done,               "diff",                                  "the settings are equal"},
    {ExitCode::done,               "preflight",                             "the server can start"},
    {ExitCode::done,               "status",                                "running, accepting or published"},
    {ExitCode::done,               "convert explain completions",           "done"},
    {ExitCode::negative,           "check preflight exec",                  "the server would refuse FLAGS"},
    {ExitCode::negative,           "check",                                 "the settings are not those that --expect names"},
    {ExitCode::negative,           "fix",                                   "not everything could be corrected"},
    {ExitCode::negative,           "convert",                               "the server would refuse FLAGS, so --tidy wrote nothing"},
    {ExitCode::negative,           "diff",                                  "the settings differ"},
    {ExitCode::negative,           "status",                                "the server would refuse FLAGS, or they name no runtime files"},
    {ExitCode::negative,           "publish",                               "the server would refuse FLAGS, or another server is in the way"},
    {ExitCode::misused,            "",                                      "usage error"},
    {ExitCode::misused,            "diff",                                  "one of the command lines is refused or cannot be read"},
    {ExitCode::warned,             "check diff preflight status exec publish", "accepted, but --strict found a warning"},
    {ExitCode::warned,             "fix",                                   "corrected, except that you have to replace a <value> or <provider>, or --strict found a warning"},
    {ExitCode::absent,             "status",                                "not published, not yet, or not accepting"},
    {ExitCode::absent,             "check",                                 "the setting that --get names is not set"},
    {ExitCode::stale_or_malformed, "status",                                "published, but stale or malformed"},
    {ExitCode::timed_out,          "status",                                "timed out waiting"},
    {ExitCode::failed_io,          "",                                      "input or output failed"},
    {ExitCode::not_ready,          "preflight exec",                        "on this machine the server would not start with these flags, or preflight cannot tell"},
};
// clang-format on

struct CommandCode {
    std::string_view verb, meaning;
};

/// How verbs end that pass on the exit code of a command.
inline constexpr CommandCode command_codes[] = {
    {"publish", "'publish' ends with the exit code of COMMAND, or with 128 plus the number of the signal "
                "that ended it, also if --ready never accepted connections. It ends with 127 if there is no "
                "such command, and with 126 if it cannot be "
                "started. Without COMMAND, it ends with 0 after the signals INT and TERM."},
    {"exec", "'exec' ends as COMMAND does. It ends with 127 if there is no such command, and with 126 if it "
             "cannot be started."},
};

} // namespace orvane
