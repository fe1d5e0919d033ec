// Mistyped and invisible characters, and texts without them.
#include "text/spelling.hpp"

#include "text/invisible.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orvane {
namespace {

constexpr std::u16string_view wide_blanks = u"\u00A0\u202F\u3000\u2000\u2001\u2002\u2003\u2004\u2005\u2006"
                                            u"\u2007\u2008\u2009\u200A\t\r\n";

// Letters of other alphabets that are drawn like Latin ones, and those.
constexpr std::u16string_view drawn_alike =
    u"\u0430\u0435\u043E\u0440\u0441\u0443\u0445\u0456\u0455\u0458\u04BB\u0501"
    u"\u051B\u051D\u0410\u0412\u0415\u041A\u041C\u041D\u041E\u0420\u0421\u0422"
    u"\u0423\u0425\u0406\u0405\u0408\u03BF\u03B1\u03BD\u03C1\u03C5\u03B9\u0391"
    u"\u0392\u0395\u0396\u0397\u0399\u039A\u039C\u039D\u039F\u03A1\u03A4\u03A5"
    u"\u03A7";
constexpr std::u16string_view drawn_as = u"aeopcyxisjhdqwABEKMHOPCTYXISJoavpuiABEZHIKMNOPTYX";
static_assert(drawn_alike.size() == drawn_as.size());

// Letters that are typed instead of Latin ones, but seen to be others.
constexpr std::u16string_view similar =
    u"\u043A\u043C\u0442\u0433\u0438\u043F\u0432\u043D\u03C4\u03BA\u03B5\u03B7"
    u"\u03B3\u03C7\u03F2\u03C9\u0131\u0261";
constexpr std::u16string_view similar_to = u"kmtrunbhtkenyxcwig";
static_assert(similar.size() == similar_to.size());

bool is_upper(char16_t c) {
    return c >= u'A' && c <= u'Z';
}

/// Most characters are; no table needs to be searched for them.
bool is_printable_ascii(char16_t c) {
    return c >= 0x20 && c < 0x7F;
}

char16_t as_ascii(char16_t c) {
    if (is_printable_ascii(c)) return c;
    if (is_one_of(c, dashes)) return u'-';
    if (c >= 0xFF01 && c <= 0xFF5E) return static_cast<char16_t>(c - 0xFEE0); // of full width
    if (const auto at = drawn_alike.find(c); at != drawn_alike.npos) return drawn_as[at];
    const auto at = similar.find(c);
    return at == similar.npos ? c : similar_to[at];
}

/// The end of a terminal's escape sequence, or of its rest when the escape itself was lost.
std::size_t end_of_escape(std::u16string_view text, std::size_t at) {
    if (text[at] != 0x1B || at + 1 == text.size() || text[at + 1] != u'[') return at;
    const auto last = text.find_first_not_of(u"0123456789;?", at + 2);
    return last == text.npos ? text.size() : last + 1;
}

/// What opens and closes, or does both.
bool is_pair(char16_t first, char16_t last) {
    constexpr std::u16string_view opening = u"\"'`<[({\u2018\u201C\u201E\u00AB\u201C\u00B4\u2019\u201D";
    constexpr std::u16string_view closing = u"\"'`>])}\u2019\u201D\u201C\u00BB\u201C\u00B4\u2019\u201D";
    for (std::size_t i = 0; i != opening.size(); ++i)
        if (opening[i] == first && closing[i] == last) return true;
    return false;
}

} // namespace

bool is_alphanumeric(char16_t c) {
    const bool other_mark = c < 0xC0 || (c >= 0x2000 && c < 0x2C00) || (c >= 0x3000 && c < 0x3040);
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || !other_mark;
}

bool is_one_of(char16_t c, std::u16string_view set) {
    return set.find(c) != set.npos;
}

std::u16string trimmed(std::u16string_view text, std::u16string_view set) {
    const auto begin = text.find_first_not_of(set);
    if (begin == text.npos) return {};
    return std::u16string(text.substr(begin, text.find_last_not_of(set) + 1 - begin));
}

std::u16string visible(std::u16string_view text) {
    std::u16string seen;
    seen.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (const std::size_t end = end_of_escape(text, i); end != i) {
            i = end;
            continue;
        }
        const std::size_t hidden = invisible_at(text, i);
        if (!is_printable_ascii(text[i]) && is_one_of(text[i], wide_blanks))
            seen += u' ';
        else if (hidden == 0)
            seen += text[i];
        i += std::max<std::size_t>(hidden, 1);
    }
    return seen;
}

std::u16string folded(std::u16string_view text) {
    std::u16string seen = visible(text);
    std::transform(seen.begin(), seen.end(), seen.begin(), as_ascii);
    return seen;
}

std::u16string bare(std::u16string_view text) {
    const std::u16string seen = visible(text);
    std::u16string_view left = seen;
    for (std::size_t size = left.size() + 1; left.size() != size && !left.empty();) {
        size = left.size();
        const auto is_dirt = [](char16_t c, std::u16string_view set) { return is_one_of(c, set); };
        const bool separated = is_dirt(left.back(), u" ,;");
        // Separators first, then a pair, and only then a quote that is alone.
        if (left.size() > 1 && is_pair(left.front(), left.back()))
            left = left.substr(1, left.size() - 2);
        else if (!separated && (is_dirt(left.front(), u" =") || is_dirt(left.front(), quotes)))
            left.remove_prefix(1);
        else if (separated || is_dirt(left.back(), quotes))
            left.remove_suffix(1);
    }
    return std::u16string(left);
}

std::u16string normalized(std::u16string_view text) {
    // Longer than any flag, however it is spelt: not copied again and again.
    constexpr std::size_t most = 200;
    const std::u16string seen = folded(text.substr(0, most));
    std::u16string words;
    char16_t before = 0;
    std::u16string between;
    for (const char16_t c : seen) {
        if (!is_alphanumeric(c)) {
            between += is_one_of(c, u"/\\@=,:;*%&|") ? c : u'-';
        } else {
            if (!words.empty()) {
                const auto odd = between.find_first_not_of(u'-');
                if (odd != between.npos)
                    words += between[odd];
                else if (!between.empty() || (is_upper(c) && !is_upper(before)))
                    words += u'-';
            }
            between.clear();
            words += is_upper(c) ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
        }
        before = c;
    }
    return words;
}

std::u16string letters(std::u16string_view text) {
    std::u16string words = normalized(text);
    words.erase(std::remove(words.begin(), words.end(), u'-'), words.end());
    return words;
}

std::vector<std::u16string> split_words(std::u16string_view text, std::u16string_view separators) {
    std::vector<std::u16string> words;
    for (const std::u16string_view part : split<char16_t>(text, separators))
        if (!part.empty()) words.emplace_back(part);
    return words;
}

std::size_t distance(std::u16string_view a, std::u16string_view b, std::size_t most) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > most) return most + 1;
    constexpr std::size_t longest = 100;
    if (b.size() >= longest) return most + 1;
    std::array<std::uint8_t, longest> distances[3] = {}; // two before, the one before, and this
    for (std::size_t j = 0; j <= b.size(); ++j)
        distances[1][j] = static_cast<std::uint8_t>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        auto& [two_back, last, row] = distances;
        row[0] = static_cast<std::uint8_t>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const int near = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            const bool exchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            row[j] = static_cast<std::uint8_t>(exchanged ? std::min(near, two_back[j - 2] + 1) : near);
        }
        std::swap(two_back, last);
        std::swap(last, row);
    }
    const std::size_t far = distances[1][b.size()];
    return std::min(far, most + 1);
}

std::vector<std::string> most_like(const std::u16string& words, const std::vector<std::string>& texts) {
    std::vector<std::string> found;
    if (words.size() < 2) return found;
    std::size_t nearest = words.size();
    for (const std::string& text : texts) {
        const std::u16string meant = normalized(qel::i18n::utf8_to_ustring(text));
        const std::size_t most = std::max<std::size_t>(1, std::min(words.size(), meant.size()) / 4);
        // Some shorten words, as other programs allow; one letter may be as far.
        const bool shortened = words.size() > 2 && meant.starts_with(words);
        const std::size_t far = std::min(distance(words, meant, most), shortened ? std::size_t{1} : most + 1);
        if (far > most || far > nearest) continue;
        if (far < nearest) found.clear();
        nearest = far;
        if (found.size() < 3) found.push_back(text);
    }
    return found;
}

std::u16string lower(std::u16string text) {
    for (char16_t& c : text)
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + (u'a' - u'A'));
    return text;
}

bool means_off(std::u16string_view text) {
    const std::u16string word = normalized(text);
    constexpr std::u16string_view words[] = {u"false", u"no", u"off", u"0", u"disabled"};
    return contains(words, word);
}

bool all_digits(std::u16string_view text) {
    return !text.empty() && text.find_first_not_of(u"0123456789") == text.npos;
}

bool is_ipv4(std::u16string_view host) {
    int count = 0;
    for (bool more = true; more; ++count) {
        const std::size_t dot = host.find(u'.');
        const std::u16string_view part = host.substr(0, dot);
        if (!all_digits(part) || part.size() > 3 || (part.size() == 3 && part > u"255")) return false;
        more = dot != host.npos;
        if (more) host.remove_prefix(dot + 1);
    }
    return count == 4;
}

bool looks_latin(char16_t c) {
    return is_one_of(c, drawn_alike) || (c >= 0xFF01 && c <= 0xFF5E);
}

} // namespace orvane
