// Texts from outside, shown where they can do no harm.
#include "text/escape.hpp"

#include "text/invisible.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

using qel::i18n::ustring_to_utf8, qel::i18n::utf8_to_ustring;

std::string escape_all(std::string_view text) {
    return ustring_to_utf8(with_codes(utf8_to_ustring(std::string(text)), u"\n"));
}

} // namespace

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
