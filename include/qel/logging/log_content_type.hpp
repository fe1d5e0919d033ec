// Which log records a handler receives.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace qel::logging {

/// Bit masks. Bit 0 is always set, so no parsed handler has the value 0.
enum class log_content_type : std::int32_t {
    content_default = 3,
    content_statistics = 5,
    content_dashboard = 7
};

/// All content types, in the order in which a handler's definition is compared with them.
inline constexpr std::array<log_content_type, 3> log_content_types = {{log_content_type::content_dashboard,
                                                                       log_content_type::content_statistics,
                                                                       log_content_type::content_default}};

/// The text of the content type in a handler's definition; empty for a value that is none of the three.
constexpr std::string_view to_text(log_content_type content) noexcept {
    if (content == log_content_type::content_default) return "type=default";
    if (content == log_content_type::content_statistics) return "type=statistics";
    if (content == log_content_type::content_dashboard) return "type=dashboard";
    return {};
}

} // namespace qel::logging
