// The command lines that are measured.
#pragma once

#include <deque>
#include <string>
#include <vector>

namespace qel::config::bench {

/// One command line, in the form for this library and in the form for others.
struct Corpus {
    std::string name;
    std::deque<std::u16string> wide{};
    std::vector<std::string> narrow{};

    void add(const std::string& token);
};

/// The command lines in corpora/, one token per line: minimal, typical and full (every flag once).
std::vector<Corpus> corpora();

/// --auto-deploy-root and `count` flags that may be repeated, in turn, each with a different value: those of lumo roots,
/// user data, log handlers and profiles, or all eight.
Corpus repeated(int count, int kinds = 4);
constexpr int all_kinds = 8;

/// The tokens without --auto-deploy-root: they are parsed to the end, then refused without a message. Only the runtime
/// roots and the user data reach the record after that. So this measures the walk; the rest of a parse is the
/// completion, plus the flag that is left out.
std::deque<std::u16string> for_walk_alone(std::deque<std::u16string> tokens);

} // namespace qel::config::bench
