// A POSIX terminal takes UTF-8.
#include "qel/i18n/convert.hpp"

namespace qel::i18n {

std::string ustring_to_term(std::u16string_view text) {
    return ustring_to_utf8(text);
}

} // namespace qel::i18n
