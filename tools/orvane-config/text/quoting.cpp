// Tokens as one would type them.
#include "text/quoting.hpp"

#include "text/invisible.hpp"
#include "text/shell_word.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {

using qel::i18n::ustring_to_utf8;

std::string shown(const std::u16string& token) {
    if (!has_invisible(token)) return sh_word(ustring_to_utf8(token));
    return "$'" + ustring_to_utf8(with_codes(token, {}, u"'\\")) + "'";
}

} // namespace orvane
