// Amounts as people read them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace orvane::preflight {

/// "1.5 GiB", cut to one decimal.
inline std::string amount(std::uint64_t bytes) {
    constexpr std::array units = {" bytes", " KiB", " MiB", " GiB", " TiB", " PiB", " EiB"};
    std::size_t unit = 0;
    std::uint64_t whole = bytes, rest = 0;
    for (; whole >= 1024 && unit + 1 != units.size(); ++unit) {
        rest = whole % 1024;
        whole /= 1024;
    }
    const std::uint64_t tenths = rest * 10 / 1024;
    return std::to_string(whole) + (tenths == 0 ? "" : "." + std::to_string(tenths)) + units.at(unit);
}

} // namespace orvane::preflight
