// Texts from outside, shown where they can do no harm.
#include "text/escape.hpp"

#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

void append_escaped(char16_t unit, std::string& text) {
    text += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += "0123456789abcdef"[unit >> shift & 15];
}

std::string escape_all(std::string_view text) {
    std::string shown;
    std::u16string plain;
    const auto append_plain = [&] {
        shown += qel::i18n::ustring_to_utf8(plain);
        plain.clear();
    };
    for (const char16_t unit : qel::i18n::utf8_to_ustring(std::string(text))) {
        if (unit == u'\n' || !is_invisible(unit)) {
            plain += unit;
            continue;
        }
        append_plain();
        append_escaped(unit, shown);
    }
    append_plain();
    return shown;
}

} // namespace

std::string escape(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f)
            append_escaped(byte, shown);
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
