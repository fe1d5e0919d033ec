// The verbs, a row each. Dispatch, help, completions, the manual page and advice read this table.
#pragma once

#include "own/exit_code.hpp"

#include <algorithm>
#include <string_view>

namespace orvane {

struct Call;
using Run = ExitCode(const Call& call);

namespace verb {
Run check, show, fix, convert, diff, exec, preflight, locate, publish, flags, explain, manual, completions,
    usage, help, version;
}

struct Verb {
    std::string_view group;
    std::string_view name;
    std::string_view
        arguments; ///< [X]: optional, [X]...: any number; a|b: one of these words; else the server's FLAGS, or nothing
    Run* run;
    std::string_view summary; ///< one line in the list of verbs
    std::string_view more;    ///< sentences that the verb's own help adds
};

// clang-format off
inline constexpr Verb verbs[] = {
    {"Command lines",   "check",       "FLAGS...",                     verb::check,
     "say whether the server accepts FLAGS, and what they set",
     "It prints the settings that the server would run with, or everything that is wrong and where."},
    {"Command lines",   "show",        "FLAGS...",                     verb::show,
     "print every setting, and the flags that it comes from",
     "Values that the library completes are marked as defaults."},
    {"Command lines",   "fix",         "FLAGS...",                     verb::fix,
     "print the corrected command line",
     "What was wrong goes to standard error. A value that cannot be guessed becomes a <value> to replace."},
    {"Command lines",   "convert",     "FLAGS...",                     verb::convert,
     "write FLAGS for a file, a shell, a unit or a container",
     "The server need not accept them."},
    {"Command lines",   "diff",        "FLAGS... -- FLAGS...",         verb::diff,
     "print the settings that differ between two command lines",
     "Either side can be a file: diff FILE FILE."},
    {"Command lines",   "preflight",   "FLAGS...",                     verb::preflight,
     "say whether the server can start now, on this machine",
     "It checks as this user what the server needs to start, and changes nothing."},
    {"Running servers", "locate",      "FLAGS...",                     verb::locate,
     "find a running server by its runtime files",
     "It says whether the files can be trusted."},
    {"Running servers", "exec",        "FLAGS... -- COMMAND ARGS...",  verb::exec,
     "check FLAGS, then become the server with them",
     "The arguments of COMMAND are ARGS, then the FLAGS. If FLAGS are refused, COMMAND is not started."},
    {"Running servers", "publish",     "FLAGS... [-- COMMAND ARGS...]", verb::publish,
     "publish runtime files for a program that writes none",
     "The files exist while COMMAND runs; without COMMAND, until a signal arrives."},
    {"Reference",       "flags",       "[FLAG|WORD]...",               verb::flags,
     "explain the server's flags: all, or some",
     "WORD can be another server's name for a flag, a setting, or a word of the meaning."},
    {"Reference",       "explain",     "[ID]",                         verb::explain,
     "explain what the tool finds, by its id",
     "It says what is wrong, and how to fix it. Without ID, it prints all entries."},
    {"Reference",       "manual",      "tool|flags|files",             verb::manual,
     "print a manual page: tool, flags or runtime files",
     "'man -l FILE' shows it."},
    {"Reference",       "usage",       "[NAME]",                       verb::usage,
     "print the server's usage text",
     "NAME is what the program is called in it."},
    {"This tool",       "completions", "bash|zsh|fish|powershell",     verb::completions,
     "print a script that completes flags in a shell",
     "The flags' values are completed, too."},
    {"This tool",       "help",        "[VERB]",                       verb::help,
     "print this list, or the help of a verb",
     ""},
    {"This tool",       "version",     "",                             verb::version,
     "print the library's version",
     ""},
};
// clang-format on

/// The column of the summaries: a list of verbs has a line for each, of 80 columns at most.
inline constexpr std::size_t summary_column = 15;

static_assert(std::ranges::all_of(verbs,
                                  [](const Verb& verb) {
                                      return verb.name.size() + 2 < summary_column &&
                                             summary_column + verb.summary.size() <= 80;
                                  }),
              "a verb's name or summary is too long for a line");

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
