// Tokens as one would type them.
#include "text/quoting.hpp"

#include "text/escape.hpp"
#include "text/shell_word.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {

using qel::i18n::ustring_to_utf8;

std::string shown(const std::u16string& token) {
    if (std::none_of(token.begin(), token.end(), is_invisible)) return sh_word(ustring_to_utf8(token));
    std::u16string quoted;
    for (const char16_t c : token) {
        if (is_invisible(c)) {
            quoted += code_of(c);
        } else {
            if (c == u'\'' || c == u'\\') quoted += u'\\';
            quoted += c;
        }
    }
    return "$'" + ustring_to_utf8(quoted) + "'";
}

} // namespace orvane
