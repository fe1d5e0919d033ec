// Characters that cannot be seen in a line.
#include "text/invisible.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

struct Range {
    char32_t first, last;
};

// Of Unicode 14.0: Default_Ignorable_Code_Point, Bidi_Control, and the categories Cf, Cc, Zl and Zp, without
// Prepended_Concatenation_Mark, whose characters can be seen; and the no-break space.
constexpr Range invisible[] = {
    {0x0000, 0x001F}, {0x007F, 0x00A0},   {0x00AD, 0x00AD},   {0x034F, 0x034F},   {0x061C, 0x061C},
    {0x115F, 0x1160}, {0x17B4, 0x17B5},   {0x180B, 0x180F},   {0x200B, 0x200F},   {0x2028, 0x202E},
    {0x2060, 0x206F}, {0x3164, 0x3164},   {0xFE00, 0xFE0F},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},
    {0xFFF0, 0xFFFB}, {0x13430, 0x13438}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF},
};

/// Half of a pair is a character of its size.
char32_t character_at(std::u16string_view text, std::size_t at) {
    const char32_t high = text[at], low = at + 1 < text.size() ? text[at + 1] : 0;
    const bool pair = high >> 10 == 0x36 && low >> 10 == 0x37;
    return pair ? 0x10000 + ((high & 0x3FF) << 10 | (low & 0x3FF)) : high;
}

} // namespace

bool is_invisible(char32_t c) {
    if (c >= 0x20 && c < 0x7F) return false;
    const auto range = std::ranges::lower_bound(invisible, c, {}, &Range::last);
    return range != std::end(invisible) && range->first <= c;
}

std::size_t invisible_at(std::u16string_view text, std::size_t at) {
    const char32_t c = character_at(text, at);
    const std::size_t units = c > 0xFFFF ? 2 : 1;
    return is_invisible(c) ? units : 0;
}

bool has_invisible(std::u16string_view text) {
    for (std::size_t i = 0; i != text.size(); ++i)
        if (invisible_at(text, i) != 0) return true;
    return false;
}

std::u16string code_of(char32_t character) {
    const bool wide = character > 0xFFFF;
    std::u16string code = wide ? u"\\U" : u"\\u";
    for (int shift = wide ? 28 : 12; shift >= 0; shift -= 4)
        code += u"0123456789abcdef"[character >> shift & 15];
    return code;
}

std::string with_json_codes(const std::string& text) {
    const std::u16string units = qel::i18n::utf8_to_ustring(text);
    std::u16string shown;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const std::size_t hidden = units[i] < 0x7F ? 0 : invisible_at(units, i);
        shown += hidden == 0 ? std::u16string(1, units[i]) : code_of(units[i]);
        if (hidden == 2) shown += code_of(units[++i]);
    }
    return qel::i18n::ustring_to_utf8(shown);
}

std::u16string with_codes(std::u16string_view text, std::u16string_view kept, std::u16string_view quoted) {
    std::u16string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t hidden = kept.find(text[i]) == kept.npos ? invisible_at(text, i) : 0;
        if (quoted.find(text[i]) != quoted.npos) shown += u'\\';
        shown += hidden == 0 ? std::u16string(1, text[i]) : code_of(character_at(text, i));
        i += hidden == 2 ? 1 : 0;
    }
    return shown;
}

} // namespace orvane
