// The output formats of log handlers.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace qel::logging {

/// The output format of a handler.
enum class log_format_type : std::int32_t { text_plain = 0, text_xml = 1, text_json = 2 };

/// All formats.
inline constexpr std::array<log_format_type, 3> log_format_types = {
    {log_format_type::text_plain, log_format_type::text_xml, log_format_type::text_json}};

/// The text of the format; empty for a value that is none of the three.
constexpr std::string_view to_text(log_format_type format) noexcept {
    if (format == log_format_type::text_plain) return "text/plain";
    if (format == log_format_type::text_xml) return "text/xml";
    if (format == log_format_type::text_json) return "text/json";
    return {};
}

} // namespace qel::logging
