// The tool's own options, a row each. Parsing, help, completions, the manual page and advice read this table.
#pragma once

#include "verbs/verb_table.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct OwnOption {
    std::string_view name;  ///< without its hyphens
    std::string_view value; ///< what stands for it in the help; a|b: one of these words; empty for a switch
    std::string_view verbs; ///< that take it; empty when all do
    std::string_view meaning;
};

// clang-format off
inline constexpr OwnOption own_options[] = {
    {"strict", "",                  "check",                         "let warnings count: the exit code is 3 when there are any"},
    {"ignore", "ID[,ID]...",        "check show fix",                "leave out warnings of these kinds; 'orvane-config warnings' lists them"},
    {"json",   "",                  "check show locate",             "answer in JSON"},
    {"from",   "FILE",              "check show fix locate publish", "read the FLAGS from a file, or with - from standard input: "
                                                                     "a token a line, or each ended by a zero byte"},
    {"wait",   "SECONDS",           "locate",                        "wait until the server is there, at most this long"},
    {"format", "text|markdown|man", "flags warnings",                "format of the reference; text without it"},
    {"for",    "NAME",              "completions",                   "complete for the server's executable of this name, not for orvane-config"},
    {"help",   "",                  "",                              "print the help of the verb"},
};
// clang-format on

/// The words of a list in which `separator` stands between them.
constexpr std::vector<std::string_view> split(std::string_view list, char separator) {
    std::vector<std::string_view> words;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(separator), list.size());
        words.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return words;
}

constexpr bool takes(const Verb& verb, const OwnOption& option) {
    const auto names = split(option.verbs, ' ');
    return names.empty() || std::find(names.begin(), names.end(), verb.name) != names.end();
}

/// Null when no verb has an option of that name.
constexpr const OwnOption* option_of(std::string_view name) {
    for (const OwnOption& option : own_options)
        if (option.name == name) return &option;
    return nullptr;
}

static_assert(std::ranges::all_of(own_options,
                                  [](const OwnOption& option) {
                                      return std::ranges::all_of(split(option.verbs, ' '), [](auto name) {
                                          return verb_of(name)->name == name;
                                      });
                                  }),
              "an option names a verb that is not in the table of verbs");

/// The row of an option that is there: any other name does not compile.
consteval const OwnOption& own(std::string_view name) {
    return *option_of(name);
}

/// As it is typed.
inline std::string spelled(const OwnOption& option) {
    return "--" + std::string(option.name);
}

} // namespace orvane
