// Tokens as one would type them.
#include "printing/quoting.hpp"

#include "explaining/spelling.hpp"
#include "formats/sh.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {

using qel::i18n::ustring_to_utf8;

std::string shown(const std::u16string& token) {
    if (std::none_of(token.begin(), token.end(), is_invisible)) return sh_word(ustring_to_utf8(token));
    std::u16string quoted;
    for (const char16_t c : token) {
        if (is_invisible(c)) {
            quoted += u"\\u";
            for (int shift = 12; shift >= 0; shift -= 4)
                quoted += u"0123456789abcdef"[c >> shift & 15];
        } else {
            if (c == u'\'' || c == u'\\') quoted += u'\\';
            quoted += c;
        }
    }
    return "$'" + ustring_to_utf8(quoted) + "'";
}

std::string shown(const Occurrence& occurrence) {
    std::string text;
    for (const Token& word : occurrence)
        text += (text.empty() ? "" : " ") + (!word.sample.empty() ? "<value>" : shown(word.text));
    return text;
}

std::string numbers_of(const Occurrence& occurrence) {
    // One token may have become two, or two may have changed places.
    const auto [first, last] = std::minmax(occurrence.front().number, occurrence.back().number);
    if (first == last) return "token " + std::to_string(first);
    return "tokens " + std::to_string(first) + " and " + std::to_string(last);
}

} // namespace orvane
