// How much memory this process may use.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orvane {

struct Memory {
    std::uint64_t physical;
    std::uint64_t swap;
    std::optional<std::uint64_t> limit{}; ///< of the control group or job that this process is in
    std::string limited_by{};             ///< what sets it
};

/// None when the system does not tell.
std::optional<Memory> memory_here();

} // namespace orvane
