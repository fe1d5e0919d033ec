// The words of a text.
#include "redacting/words.hpp"

#include "text/invisible.hpp"
#include "text/spelling.hpp"

#include <algorithm>

namespace orvane::redacting {
namespace {

/// How many characters are of the set, without dots at their end; 0 when a word goes on after them, or when no address is that
/// long.
std::size_t run(std::u16string_view text, std::u16string_view set) {
    constexpr std::size_t longest = 46;
    const std::size_t size = std::min(text.substr(0, longest).find_first_not_of(set), text.size());
    if (size >= longest || (size != text.size() && is_of_a_word(text[size]))) return 0;
    return text.substr(0, size).find_last_not_of(u'.') + 1;
}

bool is_ipv6(std::u16string_view text) {
    const auto colons = std::ranges::count(text, u':');
    return (colons > 1 && colons < 8 && text.find(u"::") != text.npos) || colons == 7;
}

std::size_t size_of_ipv6(std::u16string_view text, bool port_follows) {
    const std::u16string_view all = text.substr(0, run(text, u"0123456789abcdefABCDEF:."));
    const std::size_t colon = all.rfind(u':');
    const bool has_port = port_follows && colon != all.npos && all_digits(all.substr(colon + 1));
    if (has_port && is_ipv6(all.substr(0, colon))) return colon;
    return is_ipv6(all) ? all.size() : 0;
}

/// Of marks with a letter or digit: what is for a shell, and a line feed as user data has it.
std::size_t size_of_mark(std::u16string_view text, bool is_first, bool is_path) {
    for (const std::u16string_view mark : {u"2>&1", u"2>"})
        if (is_first && text.starts_with(mark)) return mark.size();
    return !is_path && text.starts_with(u"\\n") ? 2 : 0;
}

} // namespace

bool is_of_a_word(char16_t c) {
    if (c < 0x80) return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
    const bool punctuation = (c >= 0x2000 && c < 0x2070) || c == 0x3000;
    return !punctuation && !is_invisible(c) && !is_one_of(c, quotes) && !is_one_of(c, dashes);
}

bool Word::next(std::u16string_view also) {
    begin = end;
    if (begin == text.size()) return false;
    const std::u16string_view rest = text.substr(begin);
    const auto is = [&](Kind what, std::size_t size) {
        if (size != 0) kind = what, end = begin + size;
        return size != 0;
    };
    if (is(Kind::mark, size_of_mark(rest, begin == 0, flag != nullptr && flag->holds(Holds::path))))
        return true;
    const bool letters = is_of_a_word(rest[0]);
    if ((letters || rest[0] == u':') &&
        is(Kind::ipv6, size_of_ipv6(rest, also == of_hosts && before() != u'[')))
        return true;
    if (!letters) return is(Kind::mark, 1);
    const std::size_t digits = run(rest, u".0123456789");
    if (is_ipv4(rest.substr(0, digits))) return is(Kind::ipv4, digits);
    std::size_t size = 1;
    for (std::size_t i = 1; i != rest.size() && (is_of_a_word(rest[i]) || is_one_of(rest[i], also)); ++i)
        if (is_of_a_word(rest[i])) size = i + 1;
    return is(Kind::word, size);
}

} // namespace orvane::redacting
