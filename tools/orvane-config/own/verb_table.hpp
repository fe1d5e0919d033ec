// The verbs, a row each. Dispatch, help, completions, the manual page and advice read this table.
#pragma once

#include "text/lists.hpp"

#include <algorithm>
#include <string_view>

namespace orvane {

/// What the arguments of a verb, or the value of an option, can be.
enum class Argument {
    none,
    anything,
    a_word, ///< of those in its text, a|b
    file,
    setting,
    warnings,
    groups,        ///< of preflight
    a_subject,     ///< of what `explain` knows
    flags,         ///< the server's: everything from the first one on is for the library
    flags_command, ///< the same, and perhaps a command
    two_lines,     ///< of flags, or files
};

struct Verb {
    std::string_view group;
    std::string_view name;
    Argument argument;
    std::string_view arguments; ///< in the help; [X]: optional, [X]...: any number
    std::string_view summary;   ///< one line in the list of verbs
    std::string_view more;      ///< sentences that the verb's own help adds
};

// clang-format off
inline constexpr Verb verbs[] = {
    {"Command lines", "check",       Argument::flags,         "FLAGS...",
     "say whether the server accepts FLAGS, and what they set",
     "It prints the settings that the server would run with, or everything that is wrong and where."},
    {"Command lines", "fix",         Argument::flags,         "FLAGS...",
     "print the corrected command line",
     "What was wrong goes to standard error. A value that cannot be guessed becomes a <value> to replace."},
    {"Command lines", "diff",        Argument::two_lines,     "FLAGS... -- FLAGS...",
     "print the settings that differ between two command lines",
     "Either side can be a file: diff FILE FILE."},
    {"Command lines", "convert",     Argument::flags,         "FLAGS...",
     "write FLAGS for a file, a shell, a unit or a container",
     "The server need not accept them."},
    {"The server",    "preflight",   Argument::flags,         "FLAGS...",
     "say whether the server can start now, on this machine",
     "It checks as this user what the server needs to start, and changes nothing."},
    {"The server",    "status",      Argument::flags,         "FLAGS...",
     "say whether the server is running, and where",
     "It looks at the server's runtime files, and says whether they can be trusted."},
    {"The server",    "exec",        Argument::flags_command, "FLAGS... -- COMMAND ARGS...",
     "check FLAGS, then become the server with them",
     "The arguments of COMMAND are ARGS, then the FLAGS. If FLAGS are refused, COMMAND is not started."},
    {"The server",    "publish",     Argument::flags_command, "FLAGS... [-- COMMAND ARGS...]",
     "publish runtime files for a program that writes none",
     "The files exist while COMMAND runs; without COMMAND, until a signal arrives."},
    {"Help",          "explain",     Argument::a_subject,     "[WORD]...",
     "explain a flag, a setting, an id, or a word",
     "WORD can also be another server's name for a flag. 'explain flags' is the whole reference, 'explain ids' lists "
     "all that the tool finds, 'explain usage [NAME]' is the server's usage text. Without WORD, it prints an index."},
    {"Help",          "completions", Argument::a_word,        "bash|zsh|fish|powershell",
     "print a script that completes flags in a shell",
     "The flags' values are completed, too."},
};
// clang-format on

/// What people call a verb or an option of this tool, and what it is here.
struct OtherWords {
    std::string_view words;
    std::string_view meant;
};

// clang-format off
inline constexpr OtherWords words_of_others[] = {
    {"validate verify test lint -t",  "check"},
    {"show print dump -T",            "check --all"},
    {"format fmt",                    "fix"},
    {"locate ps find ping",           "status"},
    {"start run",                     "exec"},
    {"manual man",                    "explain"},
    {"flags",                         "explain flags"},
    {"usage",                         "explain usage"},
    {"--json",                        "--format json"},
    {"-q",                            "--quiet"},
    {"--output -o",                   "--format"},
    {"--format",                      "--to"}, // of a verb that has no --format
    {"--format-in",                   "--from-format"},
};
// clang-format on

/// Empty when nobody calls anything so.
constexpr std::string_view meant_by(std::string_view word) {
    for (const OtherWords& row : words_of_others)
        if (contains(split(row.words, " "), word)) return row.meant;
    return {};
}

/// The column of the summaries: a list of verbs has a line for each, of 80 columns at most.
inline constexpr std::size_t summary_column = 15;

static_assert(std::ranges::all_of(verbs,
                                  [](const Verb& verb) {
                                      return verb.name.size() + 2 < summary_column &&
                                             summary_column + verb.summary.size() <= 80;
                                  }),
              "a verb's name or summary is too long for a line");

constexpr bool takes_command(const Verb& verb) {
    return verb.argument == Argument::flags_command;
}

/// Whether files may stand in the place of flags.
constexpr bool takes_files(const Verb& verb) {
    return verb.argument == Argument::two_lines;
}

/// Whether each of several files is a configuration of its own.
constexpr bool takes_configurations(const Verb& verb) {
    return verb.name == "check";
}

/// Whether its arguments are the server's.
constexpr bool takes_flags(const Verb& verb) {
    return verb.argument == Argument::flags || takes_command(verb) || takes_files(verb);
}

/// Whether a flag of the server can be among its arguments.
constexpr bool may_have_flags(const Verb& verb) {
    return takes_flags(verb) || verb.argument == Argument::a_subject;
}

/// Null when there is none of that name.
constexpr const Verb* verb_of(std::string_view name) {
    for (const Verb& verb : verbs)
        if (verb.name == name) return &verb;
    return nullptr;
}

} // namespace orvane
