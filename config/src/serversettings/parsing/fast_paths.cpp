#include "parsing/fast_paths.hpp"

#include <algorithm>

namespace qel::config {
namespace {

/// A run of digits. The value is correct if there are at most `always_fit` digits.
struct Digits {
    std::size_t count = 0;
    std::uint64_t value = 0;
};

constexpr std::size_t always_fit = std::numeric_limits<std::int64_t>::digits10;

/// Removes the digits at the beginning of `text`.
Digits take_digits(std::u16string_view& text) noexcept {
    Digits digits;
    for (; digits.count != text.size(); ++digits.count) {
        const auto digit = static_cast<unsigned>(text[digits.count] - u'0');
        if (digit > 9) break;
        digits.value = digits.value * 10 + digit;
    }
    text.remove_prefix(digits.count);
    return digits;
}

} // namespace

optional<std::uint64_t> plain_number(std::u16string_view text) noexcept {
    const Digits digits = take_digits(text);
    if (digits.count == 0 || digits.count > always_fit || !text.empty()) return {};
    return digits.value;
}

optional<time_duration> plain_duration(std::u16string_view text) noexcept {
    const Digits hours = take_digits(text);
    if (hours.count == 0 || hours.count > 9) return {};
    std::uint64_t count = hours.value;
    for (int part = 0; part != 2; ++part) { // minutes, seconds
        if (!text.starts_with(u':')) return {};
        text.remove_prefix(1);
        const Digits digits = take_digits(text);
        if (digits.count != 2) return {};
        count = count * 60 + digits.value;
    }
    Digits fraction;
    if (text.starts_with(u'.')) {
        text.remove_prefix(1);
        fraction = take_digits(text);
        if (fraction.count > 6) return {};
    }
    if (!text.empty()) return {};
    for (; fraction.count != 6; ++fraction.count)
        fraction.value *= 10;
    return time_duration(0, 0, 0, static_cast<std::int64_t>(count * 1'000'000 + fraction.value));
}

optional<time_duration> short_duration(std::u16string_view text) {
    const auto colons = std::count(text.begin(), text.end(), u':');
    return plain_duration(std::u16string(text) + (colons == 0 ? u":00:00" : u":00"));
}

} // namespace qel::config
