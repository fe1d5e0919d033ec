// Exact costs, the same in every run: instructions, as valgrind counts them, and allocations.
#pragma once

#include <valgrind/callgrind.h>

#include <cstddef>
#include <cstdio>
#include <string>

namespace qel::config::bench {

/// The number of calls of operator new so far. The program that counts defines it.
extern std::size_t allocations;

/// Counts one run of `work` after one that warms up. Prints a line with the name and the allocations, and leaves the
/// instructions in a profile of that name when the program runs under callgrind.
template <class Work>
void count(const std::string& name, Work work) {
    work();
    const std::size_t before = allocations;
    CALLGRIND_ZERO_STATS;
    work();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    std::printf("%s\t%zu\n", name.c_str(), allocations - before);
}

} // namespace qel::config::bench
