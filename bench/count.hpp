// Exact costs, the same in every run: instructions as counted by valgrind, allocations, and file-system look-ups
// ("questions").
#pragma once

#include "questions.hpp"

#include <valgrind/callgrind.h>

#include <cstddef>
#include <cstdio>
#include <string>

namespace qel::config::bench {

/// The number of calls of operator new so far. The counting program defines it.
extern std::size_t allocations;

/// Counts one run of `work` after a warm-up run. Prints a line with the name, the allocations and the questions. If the
/// program runs under callgrind, writes the instructions to a profile of that name. Throws std::runtime_error if `work`
/// looks up the same path twice.
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
