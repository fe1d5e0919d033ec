#include "count.hpp"

#include <cstdlib>
#include <new>

std::size_t qel::config::bench::allocations;

// Not inlined: the compiler would see that a new expression ends in a plain free(), and warn.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++qel::config::bench::allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
// clang-format off
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
// clang-format on
