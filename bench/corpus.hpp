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

} // namespace qel::config::bench
