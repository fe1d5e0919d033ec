// Texts from outside, shown where they can do no harm.
#include "text/escape.hpp"

#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

using qel::i18n::ustring_to_utf8, qel::i18n::utf8_to_ustring;

std::string escape_all(std::string_view text) {
    std::u16string shown;
    for (const char16_t unit : utf8_to_ustring(std::string(text)))
        shown += unit == u'\n' || !is_invisible(unit) ? std::u16string(1, unit) : code_of(unit);
    return ustring_to_utf8(shown);
}

} // namespace

std::u16string code_of(char16_t unit) {
    std::u16string code = u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        code += u"0123456789abcdef"[unit >> shift & 15];
    return code;
}

std::string escape(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f)
            shown += ustring_to_utf8(code_of(byte));
        else
            shown += c;
    }
    return shown;
}

std::string escape_for_terminal(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t begin = std::min({text.size(), text.find(mark_begin), text.find(mark_end)});
        const std::string_view mark = text.substr(begin).starts_with(mark_end) ? mark_end : mark_begin;
        shown += escape_all(text.substr(0, begin));
        text.remove_prefix(begin);
        if (text.empty()) break;
        shown += mark;
        text.remove_prefix(mark.size());
    }
    return shown;
}

} // namespace orvane
