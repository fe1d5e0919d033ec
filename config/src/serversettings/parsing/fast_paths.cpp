#include "parsing/fast_paths.hpp"

#include <algorithm>

namespace qel::config {
namespace {

/// Takes the digits that `text` begins with.
std::u16string_view take_digits(std::u16string_view& text) noexcept {
    const auto end = std::find_if(text.begin(), text.end(), [](char16_t c) { return c < u'0' || c > u'9'; });
    const auto digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

std::int64_t value_of(std::u16string_view digits) noexcept {
    std::int64_t value = 0;
    for (const char16_t digit : digits)
        value = value * 10 + (digit - u'0');
    return value;
}

} // namespace

optional<std::uint64_t> plain_number(std::u16string_view text) noexcept {
    constexpr std::size_t always_fits = std::numeric_limits<std::int64_t>::digits10;
    const std::u16string_view digits = take_digits(text);
    if (digits.empty() || digits.size() > always_fits || !text.empty()) return {};
    return static_cast<std::uint64_t>(value_of(digits));
}

optional<time_duration> plain_duration(std::u16string_view text) noexcept {
    const std::u16string_view hours = take_digits(text);
    if (hours.empty() || hours.size() > 9) return {};
    std::int64_t count = value_of(hours);
    for (int part = 0; part != 2; ++part) { // minutes, seconds
        if (!text.starts_with(u':')) return {};
        text.remove_prefix(1);
        const std::u16string_view digits = take_digits(text);
        if (digits.size() != 2) return {};
        count = count * 60 + value_of(digits);
    }
    std::u16string_view fraction;
    if (text.starts_with(u'.')) {
        text.remove_prefix(1);
        fraction = take_digits(text);
        if (fraction.size() > 6) return {};
    }
    if (!text.empty()) return {};
    std::int64_t micros = value_of(fraction);
    for (std::size_t digits = fraction.size(); digits != 6; ++digits)
        micros *= 10;
    return time_duration(0, 0, 0, count * 1'000'000 + micros);
}

optional<logging::severity_level> plain_severity(std::u16string_view text) noexcept {
    const auto& names = logging::severity_names;
    const auto found = std::find_if(names.begin(), names.end(), [&](std::string_view name) {
        return std::equal(name.begin(), name.end(), text.begin(), text.end());
    });
    if (found == names.end()) return {};
    return static_cast<logging::severity_level>(found - names.begin());
}

} // namespace qel::config
