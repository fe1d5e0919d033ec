// Replaces operator new by one that counts requests, and fails when told to. Include it in one source of a program.
#pragma once

#include <cstdlib>
#include <new>

inline std::size_t allocated;
inline long failing; ///< the allocation that fails, counted from now; 0: none does
inline bool all_behind_fail, failed;

// Not inlined: the compiler would see that a new expression ends in a plain free(), and warn.
[[gnu::noinline]] void* operator new(std::size_t size) {
    allocated += size;
    if (failing > 0 && --failing == 0) {
        failing = all_behind_fail;
        failed = true;
    } else if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
// clang-format off
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
// clang-format on
