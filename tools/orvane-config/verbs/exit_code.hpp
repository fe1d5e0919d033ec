// How the tool ends.
#pragma once

#include <string_view>

namespace orvane {

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
    std::string_view meaning;
};

// clang-format off
inline constexpr ExitMeaning exit_codes[] = {
    {ExitCode::done,               "accepted, located or done"},
    {ExitCode::refused,            "refused by the library, or by the state of the server's files (diff: the settings differ)"},
    {ExitCode::misused,            "orvane-config was used wrongly (diff: also if a line is refused or cannot be read)"},
    {ExitCode::warned,             "accepted, but --strict found a warning"},
    {ExitCode::not_published,      "not published, or not yet, or not set"},
    {ExitCode::stale_or_malformed, "published, but stale or malformed"},
    {ExitCode::timed_out,          "timed out waiting"},
    {ExitCode::failed_io,          "input or output failed"},
    {ExitCode::not_ready,          "on this machine the server would not start with these flags, or preflight cannot tell"},
};
// clang-format on

} // namespace orvane
