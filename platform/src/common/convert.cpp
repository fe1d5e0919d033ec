// Conversions between UTF-16 and UTF-8 that accept any input.
#include "qel/i18n/convert.hpp"

#include <utf8.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <numeric>

namespace qel::i18n {
namespace {

constexpr char16_t replacement = u'\uFFFD';

constexpr bool is_high_surrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool is_low_surrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The number of bytes to replace by one U+FFFD if `text` begins with ill-formed UTF-8: those that could begin a
/// character, at least one.
std::size_t ill_formed_length(std::string_view text) {
    const auto byte = [text](std::size_t at) { return static_cast<std::uint8_t>(text[at]); };
    const std::uint8_t lead = byte(0);
    std::size_t whole = 1; // also for the lead of two bytes: it is ill-formed only if no second byte follows
    if (lead >= 0xE0 && lead <= 0xEF) whole = 3;
    if (lead >= 0xF0 && lead <= 0xF4) whole = 4;

    // The range of the second byte excludes overlong forms, surrogates and everything above U+10FFFF.
    std::uint8_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    std::uint8_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    std::size_t length = 1;
    while (length < whole && length < text.size() && byte(length) >= low && byte(length) <= high) {
        low = 0x80;
        high = 0xBF;
        ++length;
    }
    return length;
}

} // namespace

std::string ustring_to_utf8(std::u16string_view text) {
    // Most texts are ASCII and are only copied.
    const char16_t all_bits = std::accumulate(text.begin(), text.end(), char16_t{}, std::bit_or<char16_t>());
    if (all_bits < 0x80) return {text.begin(), text.end()};
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::uint32_t point = text[at];
        if (is_high_surrogate(text[at]) && at + 1 < text.size() && is_low_surrogate(text[at + 1]))
            point = 0x10000 + ((point - 0xD800) << 10) + (text[++at] - 0xDC00U);
        else if (is_high_surrogate(text[at]) || is_low_surrogate(text[at]))
            point = replacement;
        utf8::unchecked::append(point, std::back_inserter(result));
    }
    return result;
}

std::u16string utf8_to_ustring(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (true) {
        const auto ill_formed = utf8::find_invalid(text.begin(), text.end());
        utf8::unchecked::utf8to16(text.begin(), ill_formed, std::back_inserter(result));
        if (ill_formed == text.end()) return result;
        text.remove_prefix(static_cast<std::size_t>(ill_formed - text.begin()));
        result += replacement;
        text.remove_prefix(ill_formed_length(text));
    }
}

std::u16string ascii_to_ustring(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (const char letter : text) {
        const auto byte = static_cast<std::uint8_t>(letter);
        result += byte < 0x80 ? char16_t{byte} : replacement;
    }
    return result;
}

} // namespace qel::i18n
