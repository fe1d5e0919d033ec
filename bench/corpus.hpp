// The command lines that are measured.
#pragma once

#include <deque>
#include <string>
#include <vector>

namespace qel::config::bench {

/// One command line, as this library takes it and as others do.
struct Corpus {
    std::string name;
    std::deque<std::u16string> wide{};
    std::vector<std::string> narrow{};

    void add(const std::string& token);
};

/// The command lines in corpora/, one token a line: minimal, typical and full (every flag once).
std::vector<Corpus> corpora();

/// --auto-deploy-root and `count` flags that may be repeated, each with a value of its own.
Corpus repeated(int count);

/// The tokens without --auto-deploy-root: walked to the end, then refused without a word. Only the runtime roots and the
/// user data reach the record after the walk. So this measures the walk, and what parsing takes beyond it is completion
/// (with the one flag that is left out).
std::deque<std::u16string> for_walk_alone(std::deque<std::u16string> tokens);

} // namespace qel::config::bench
