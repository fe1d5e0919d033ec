// Tokens as one would type them.
#include "text/quoting.hpp"

#include "text/invisible.hpp"
#include "text/path_anchor.hpp"
#include "text/powershell_word.hpp"
#include "text/shell_word.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {

using qel::i18n::ustring_to_utf8;

std::string shown(const std::u16string& token) {
    const bool powershell = backslash_separates();
    if (!has_invisible(token)) return (powershell ? powershell_word : sh_word)(ustring_to_utf8(token));
    if (powershell) return ustring_to_utf8(powershell_word_with_codes(token));
    return "$'" + ustring_to_utf8(with_codes(token, {}, u"'\\")) + "'";
}

std::string_view continuation() {
    return backslash_separates() ? " `" : " \\";
}

} // namespace orvane
