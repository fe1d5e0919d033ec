// The format cmd: a command line of Windows, only written. A service, a task and cmd.exe read the same words in it.
#include "formats/format_table.hpp"
#include "text/windows_word.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane {
namespace {

/// Whether it contains any of these characters.
bool has(const std::u16string& token, std::u16string_view characters) {
    return token.find_first_of(characters) != token.npos;
}

std::string quoted_for_cmd(const std::string& token) {
    const std::u16string word = qel::i18n::utf8_to_ustring(token);
    // A quote that the program is to see ends the quotes for cmd.exe.
    const bool is_command = has(word, u"&|<>^()");
    if (has(word, u"%!\r\n") || (is_command && has(word, u"\"")))
        throw CannotHold("cmd.exe cannot pass on this token as it is: " + token);
    return qel::i18n::ustring_to_utf8(windows_word(word, is_command || has(word, u",;=")));
}

} // namespace

std::string as_cmd(const TokenGroups& groups) {
    return joined(groups, quoted_for_cmd, " ") + '\n';
}

} // namespace orvane
