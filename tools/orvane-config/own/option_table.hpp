// The tool's own options, a row each. Parsing, help, completions, the manual page and advice read this table.
#pragma once

#include "formats/format_table.hpp"
#include "own/exit_code.hpp"
#include "own/verb_table.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct OwnOption {
    std::string_view name;  ///< without its hyphens
    Argument argument;      ///< what its value is
    std::string_view value; ///< its name in the help; empty for a switch
    std::string_view verbs; ///< the verbs that take it; any_flags; empty when all do
    std::string_view meaning;
};

/// The verbs that say what is wrong with flags.
inline constexpr std::string_view judging = "check fix diff preflight status exec publish";

// clang-format off
inline constexpr OwnOption own_options[] = {
    {"strict",    Argument::none,     "",                       judging,        "fail on warnings: the exit code is then 3"},
    {"ignore",    Argument::warnings, "ID[,ID]...",             judging,        "turn off these warnings; 'orvane-config explain ids' lists them all"},
    {"ids",       Argument::none,     "",                       judging,        "print the id of each fault and rule after its text"},
    {"format",    Argument::a_word,   "text|json|gcc|sarif|junit", "check preflight", "how the answer is written; by default text; gcc is FILE:LINE:COLUMN and a finding a "
                                                                                "line, for editors; sarif (2.1.0) and junit are for CI"},
    {"format",    Argument::a_word,   "text|json",              "fix diff status exec publish", "how the answer is written; by default text"},
    {"format",    Argument::a_word,   "text|markdown|json",     "explain",      "how the answer is written; by default text"},
    {"quiet",     Argument::none,     "",                       any_flags,      "print nothing but problems"},
    {"all",       Argument::none,     "",                       "check",        "print every setting, and the flags that it comes from"},
    {"security",  Argument::none,     "",                       "check preflight", "print what an attacker would gain: of check, instead of the settings; of "
                                                                                "preflight, also what clients would see"},
    {"changed",   Argument::none,     "",                       "check",        "print only the settings that differ from their defaults"},
    {"expect",    Argument::file,     "FILE",                   "check",        "compare the settings with those in FILE, written as 'check' prints them; the "
                                                                                "exit code is 1 if one differs"},
    {"get",       Argument::setting,  "SETTING",                "check",        "print only the value of this setting, one line per element of a list; "
                                                                                "the exit code is 4 if it is not set"},
    {"from",      Argument::file,     "FILE",                   any_flags,      "read FLAGS from FILE, or from standard input if FILE is -; can be "
                                                                                "repeated, and FLAGS on the command line come last"},
    {"from-format", Argument::a_word, FormatNames<true>::text,  any_flags,      "format of the files; by default detected from their content"},
    {"env",       Argument::file,     "FILE|NAME=VALUE",        any_flags,      "replace $NAME and ${NAME} in the files by VALUE, or by what FILE says; "
                                                                                "can be repeated"},
    {"pid",       Argument::anything, "PID",                    any_flags,      "read FLAGS from a running process (Linux)"},
    {"to",        Argument::a_word,   FormatNames<false>::text, "convert",      "the format to write; by default flags"},
    {"to",        Argument::a_word,   FormatNames<false>::text, "fix",          "the format to write; by default a line for a shell of this system"},
    {"in-place",  Argument::none,     "",                       "fix",          "correct FILE itself: only what was wrong changes, comments stay; for the formats "
                                                                                "flags, lines and sh"},
    {"diff",      Argument::none,     "",                       "fix",          "print what --in-place would change in FILE, for 'patch'; change nothing"},
    {"tidy",      Argument::none,     "",                       "convert",      "leave out what has no effect, and sort the flags as the reference does; "
                                                                                "the settings stay the same"},
    {"program",   Argument::anything, "PATH",                   "convert",      "put this program before the flags"},
    {"redact",    Argument::none,     "",                       "check fix diff convert", "replace all but public words, ports and amounts by placeholders, for a "
                                                                                "bug report; faults and warnings stay the same"},
    {"preflight", Argument::none,     "",                       "exec",         "also check the machine, as the verb preflight does; do not start COMMAND "
                                                                                "if the server would not start, or if preflight cannot tell"},
    {"dry-run",   Argument::none,     "",                       "exec",         "print the command instead of starting it"},
    {"only",      Argument::groups,   "GROUP[,GROUP]...",       "preflight exec", "check only these groups"},
    {"skip",      Argument::groups,   "GROUP[,GROUP]...",       "preflight exec", "do not check these groups"},
    {"restart",   Argument::none,     "",                       "preflight",    "answer for a restart: what the server in main.pid has does not stand in "
                                                                                "the way, because it ends first"},
    {"expires",   Argument::anything, "DAYS",                   "preflight",    "warn if a certificate expires within this time; by default 30 days"},
    {"network",   Argument::none,     "",                       "preflight",    "also connect to the caches that the server attaches to"},
    {"timeout",   Argument::anything, "SECONDS",                "status",       "wait for the server, at most this long"},
    {"connect",   Argument::none,     "",                       "status",       "also connect to the endpoints; the exit code is 4 if one accepts no "
                                                                                "connections"},
    {"ready",     Argument::anything, "HOST:PORT",              "publish",      "publish the endpoints only when this address accepts connections"},
    {"kill-after", Argument::anything, "SECONDS",               "publish",      "if the endpoints cannot be published when COMMAND is ready, ask it to "
                                                                                "end, and kill it after this long; by default 10"},
    {"for",       Argument::anything, "NAME",                   "completions",  "complete the flags of a server called NAME, instead of orvane-config"},
    {"help",      Argument::none,     "",                       "",             "print this help"},
};
// clang-format on

/// Whether the row of a table that names these verbs is for the verb.
constexpr bool is_for(std::string_view named, const Verb& verb) {
    if (named == any_flags) return takes_flags(verb);
    const auto names = split(named, " ");
    return names.empty() || contains(names, verb.name);
}

constexpr bool takes(const Verb& verb, const OwnOption& option) {
    return is_for(option.verbs, verb);
}

/// Those that have an option of that name.
constexpr std::vector<std::string_view> verbs_with(std::string_view option) {
    std::vector<std::string_view> names;
    for (const Verb& verb : verbs)
        if (std::ranges::any_of(own_options,
                                [&](const OwnOption& one) { return one.name == option && takes(verb, one); }))
            names.push_back(verb.name);
    return names;
}

/// Null when the verb, or no verb, has an option of that name.
constexpr const OwnOption* option_of(std::string_view name, const Verb* verb = nullptr) {
    for (const OwnOption& option : own_options)
        if (option.name == name && (verb == nullptr || takes(*verb, option))) return &option;
    return nullptr;
}

/// Whether each row names only verbs that are there.
template <class Table>
constexpr bool names_verbs(const Table& rows) {
    return std::ranges::all_of(rows, [](const auto& row) {
        return row.verbs == any_flags ||
               // g++ 12 with sanitizers takes no address for a constant here, so names are compared.
               std::ranges::all_of(split(row.verbs, " "), [](std::string_view name) {
                   return std::ranges::count(verbs, name, &Verb::name) == 1;
               });
    });
}
static_assert(names_verbs(own_options) && names_verbs(exit_codes),
              "an option or exit code names a verb that is not in the table of verbs");

/// The row of an option that is there: any other name does not compile.
consteval const OwnOption& own(std::string_view name) {
    return *option_of(name);
}

/// As it is typed.
inline std::string spelled(const OwnOption& option) {
    return "--" + std::string(option.name);
}

/// A name and what follows it.
inline std::string with(std::string_view name, std::string_view rest) {
    return std::string(name) + (rest.empty() ? "" : " ") + std::string(rest);
}

/// As help and manual page begin its entry.
inline std::string heading(const OwnOption& option) {
    return with(spelled(option), option.value);
}

} // namespace orvane
