// The severities of log records, and their names.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qel::logging {

/// Nine levels. The stream names `out` and `err` are severities like the others.
enum class severity_level : std::int32_t {
    statistics,
    trace,
    debug,
    information,
    warning,
    error,
    out,
    err,
    profile
};

/// The names; the position is the level's value.
inline constexpr std::array<std::string_view, 9> severity_names = {
    {"statistics", "trace", "debug", "information", "warning", "error", "out", "err", "profile"}};

/// The level's name; empty for a value that is none of the nine.
constexpr std::string_view to_text(severity_level level) noexcept {
    const auto position = static_cast<std::size_t>(level);
    return position < severity_names.size() ? severity_names[position] : std::string_view();
}

} // namespace qel::logging
