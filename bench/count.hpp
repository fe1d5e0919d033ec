// Exact costs, the same in every run: instructions, as valgrind counts them, allocations, and questions to the file
// system.
#pragma once

#include "questions.hpp"

#include <valgrind/callgrind.h>

#include <cstddef>
#include <cstdio>
#include <string>

namespace qel::config::bench {

/// The number of calls of operator new so far. The program that counts defines it.
extern std::size_t allocations;

/// Counts one run of `work` after one that warms up. Prints a line with the name, the allocations and the questions, and
/// leaves the instructions in a profile of that name when the program runs under callgrind.
/// Throws std::runtime_error when `work` asks the file system the same twice.
template <class Work>
void count(const std::string& name, Work work) {
    expect_new_questions();
    work();
    require_new_questions();
    const std::size_t allocated = allocations, asked = questions;
    CALLGRIND_ZERO_STATS;
    work();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    std::printf("%s\t%zu\t%zu\n", name.c_str(), allocations - allocated, questions - asked);
}

} // namespace qel::config::bench
