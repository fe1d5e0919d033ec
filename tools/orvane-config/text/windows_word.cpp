// Words of a Windows program's command line.
#include "text/windows_word.hpp"

#include "text/spelling.hpp"

namespace orvane {

std::u16string windows_word(std::u16string_view word, bool always_quoted) {
    if (!always_quoted && !word.empty() && word.find_first_of(u" \t\n\v\"") == word.npos)
        return std::u16string(word);
    std::u16string text = u"\"";
    std::size_t backslashes = 0;
    for (const char16_t unit : word) {
        // Backslashes count double only where a quote follows.
        if (unit == u'"') text.append(backslashes + 1, u'\\');
        backslashes = unit == u'\\' ? backslashes + 1 : 0;
        text += unit;
    }
    text.append(backslashes, u'\\');
    return text + u'"';
}

bool is_batch_file(std::u16string_view program) {
    // The system ignores dots and blanks at the end of a name.
    const std::u16string name = lower(trimmed(program, u". "));
    return name.ends_with(u".bat") || name.ends_with(u".cmd");
}

bool is_safe_for_cmd(std::u16string_view word) {
    return word.find_first_of(u"\"%!&|<>^\r\n") == word.npos;
}

} // namespace orvane
