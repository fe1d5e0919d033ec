// Words of PowerShell's command line.
#include "text/powershell_word.hpp"

#include "text/invisible.hpp"
#include "text/spelling.hpp"

#include <algorithm>
#include <cstdint>

namespace orvane {
namespace {

/// PowerShell takes the curly ones for quotes, too.
constexpr std::string_view curly_and_straight[] = {"'", "\xE2\x80\x98", "\xE2\x80\x99", "\xE2\x80\x9A",
                                                   "\xE2\x80\x9B"};

bool is_plain(const std::string& token) {
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyz0123456789-_ABCDEFGHIJKLMNOPQRSTUVWXYZ./\\:@";
    const auto consists_of = [&](std::string_view set) { return token.find_first_not_of(set) == token.npos; };
    if (token.empty() || token[0] == '@') return false;
    // Options with a point or a colon do not arrive as one.
    if (token[0] == '-') return token.size() > 2 && consists_of(plain.substr(0, plain.find('A')));
    // Nor do all numbers with a point or a letter arrive as they were.
    constexpr std::string_view digits = "0123456789";
    const bool may_be_number = token.find_first_of("./\\:@") == token.npos
                                   ? digits.find(token[0]) != digits.npos
                                   : consists_of("0123456789.") && token.find_first_of(digits) != token.npos;
    return may_be_number ? consists_of(digits) : consists_of(plain);
}

} // namespace

std::string powershell_word(const std::string& token) {
    if (is_plain(token)) return token;
    std::string text = "'";
    for (std::string_view left = token; !left.empty();) {
        const auto quote = std::ranges::find_if(curly_and_straight,
                                                [&](std::string_view one) { return left.starts_with(one); });
        const bool doubled = quote != std::end(curly_and_straight);
        const std::size_t size = doubled ? quote->size() : 1;
        for (int times = doubled ? 2 : 1; times != 0; --times)
            text += left.substr(0, size);
        left.remove_prefix(size);
    }
    return text + "'";
}

std::u16string powershell_word_with_codes(std::u16string_view token) {
    constexpr std::u16string_view hexadecimal = u"0123456789abcdef", to_escape = u"\"`$\u201C\u201D\u201E";
    std::u16string text = u"\"";
    for (std::size_t at = 0, hidden = 0; at != token.size(); ++at) {
        const std::uint16_t unit = token[at];
        if (hidden == 0) hidden = invisible_at(token, at);
        if (hidden == 0) {
            text.append(is_one_of(token[at], to_escape) ? 1 : 0, u'`') += token[at];
            continue;
        }
        --hidden;
        // Of a pair, each half is one.
        text += u"$([char]0x";
        for (int shift = 12; shift >= 0; shift -= 4)
            text += hexadecimal[unit >> shift & 15];
        text += u')';
    }
    return text + u'"';
}

} // namespace orvane
