// Durations, read as Boost's stream facet reads them.
#include "parsing/duration_values.hpp"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <limits>
#include <utility>

namespace qel::config {
namespace {

constexpr bool is_ascii(char16_t c) {
    return c < 0x80;
}

struct Digits {
    std::size_t count = 0;
    std::uint64_t value = 0;
};

/// Removes up to `most` digits from the beginning of `text`. 19 always fit.
Digits take_digits(std::u16string_view& text, std::size_t most) {
    Digits digits;
    for (; digits.count != std::min(most, text.size()); ++digits.count) {
        const auto digit = static_cast<unsigned>(text[digits.count] - u'0');
        if (digit > 9) break;
        digits.value = digits.value * 10 + digit;
    }
    text.remove_prefix(digits.count);
    return digits;
}

/// The digits after the point, as microseconds. What is smaller is cut off.
std::uint64_t take_fraction(std::u16string_view& text) {
    Digits digits = take_digits(text, 6);
    for (; digits.count != 6; ++digits.count)
        digits.value *= 10;
    text.remove_prefix(std::min(text.find_first_not_of(u"0123456789"), text.size()));
    return digits.value;
}

/// The special value with the name `text`, in any case.
optional<time_duration> special_duration(std::u16string_view text) {
    using namespace boost::date_time;
    constexpr std::pair<std::string_view, special_values> names[] = {{"not-a-date-time", not_a_date_time},
                                                                     {"-infinity", neg_infin},
                                                                     {"+infinity", pos_infin},
                                                                     {"minimum-date-time", min_date_time},
                                                                     {"maximum-date-time", max_date_time}};
    const auto same = [](char16_t given, char letter) {
        return is_ascii(given) && std::tolower(given) == letter;
    };
    for (const auto& [name, value] : names)
        if (std::equal(text.begin(), text.end(), name.begin(), name.end(), same)) return time_duration(value);
    return {};
}

} // namespace

optional<time_duration> read_duration(std::u16string_view text) {
    while (!text.empty() && is_ascii(text.front()) && std::isspace(text.front()))
        text.remove_prefix(1);
    if (text.empty()) return time_duration();

    const Digits hours = take_digits(text, 19);
    if (hours.count == 0) return special_duration(text);
    if (hours.value > std::numeric_limits<std::int64_t>::max()) return {};
    std::uint64_t seconds = hours.value * 3600;
    for (const unsigned unit : {60U, 1U}) {
        if (text.empty()) break;
        if (!is_ascii(text.front())) return {};
        text.remove_prefix(1);
        if (text.empty()) break;
        const Digits digits = take_digits(text, 2);
        if (digits.count != 2) return special_duration(text);
        seconds += digits.value * unit;
    }

    std::uint64_t fraction = 0;
    if (text.starts_with(u'.')) {
        text.remove_prefix(1);
        fraction = take_fraction(text);
    }
    if (!text.empty()) return {};
    // Too many hours wrap around, as in Boost's arithmetic; that of signed numbers would be undefined.
    return time_duration(
        boost::posix_time::microseconds(static_cast<std::int64_t>(seconds * 1'000'000 + fraction)));
}

} // namespace qel::config
