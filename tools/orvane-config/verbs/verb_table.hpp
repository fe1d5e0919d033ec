// The verbs, a row each. Dispatch, help, completions, the manual page and advice read this table.
#pragma once

#include "verbs/exit_code.hpp"

#include <string_view>

namespace orvane {

struct Call;
using Run = ExitCode(const Call& call);

Run check, show, fix, convert, diff, exec, preflight, locate, publish, flags, explain, completions, usage,
    help, version;

struct Verb {
    std::string_view group;
    std::string_view name;
    std::string_view
        arguments; ///< [X]: optional, [X]...: any number; a|b: one of these words; else the server's FLAGS, or nothing
    Run* run;
    std::string_view meaning;
};

// clang-format off
inline constexpr Verb verbs[] = {
    {"Command lines",   "check",       "FLAGS...",                     check,
     "parse and validate the server's FLAGS; print what they set, or what is wrong with them"},
    {"Command lines",   "show",        "FLAGS...",                     show,
     "print every setting, and which of the FLAGS it comes from"},
    {"Command lines",   "fix",         "FLAGS...",                     fix,
     "print the corrected command line, and what was wrong with the FLAGS"},
    {"Command lines",   "convert",     "FLAGS...",                     convert,
     "write the FLAGS in another format, for a file, a shell, a unit or a container"},
    {"Command lines",   "diff",        "FLAGS... -- FLAGS...",         diff,
     "print the settings that differ between two command lines; either can be a file: diff FILE FILE"},
    {"Command lines",   "preflight",   "FLAGS...",                     preflight,
     "say whether a server with these FLAGS can start now, on this machine and as this user; change nothing"},
    {"Running servers", "locate",      "FLAGS...",                     locate,
     "read the runtime files of the server with these FLAGS, and say whether they can be trusted"},
    {"Running servers", "exec",        "FLAGS... -- COMMAND ARGS...",  exec,
     "check the FLAGS, then replace this process with COMMAND; its arguments are ARGS and the FLAGS"},
    {"Running servers", "publish",     "FLAGS... [-- COMMAND ARGS...]", publish,
     "publish the runtime files of a server with these FLAGS while COMMAND runs; without COMMAND, until a signal arrives"},
    {"Reference",       "flags",       "[FLAG|WORD]...",               flags,
     "print the reference of the server's flags: all, or those that FLAG or WORD matches"},
    {"Reference",       "explain",     "[ID]",                         explain,
     "explain everything that the tool can find, or only ID: cause, example and fix"},
    {"Reference",       "usage",       "[NAME]",                       usage,
     "print the server's usage text, for a program called NAME"},
    {"This tool",       "completions", "bash|zsh|fish|powershell",     completions,
     "print a script that completes flags and their values in a shell"},
    {"This tool",       "help",        "[VERB]",                       help,
     "print this text, or the help of a verb"},
    {"This tool",       "version",     "",                             version,
     "print the library's version"},
};
// clang-format on

/// Whether its arguments are the server's, and everything from the first one on is for the library.
constexpr bool takes_flags(const Verb& verb) {
    return verb.arguments.starts_with("FLAGS");
}

/// Whether a flag of the server can be among its arguments.
constexpr bool takes_names_of_flags(const Verb& verb) {
    return verb.arguments.starts_with("[FLAG");
}

constexpr bool takes_command(const Verb& verb) {
    return verb.arguments.find("COMMAND") != verb.arguments.npos;
}

/// Whether files may stand in the place of flags.
constexpr bool takes_files(const Verb& verb) {
    return verb.arguments.ends_with("-- FLAGS...");
}

/// Null when there is none of that name.
constexpr const Verb* verb_of(std::string_view name) {
    for (const Verb& verb : verbs)
        if (verb.name == name) return &verb;
    return nullptr;
}

} // namespace orvane
