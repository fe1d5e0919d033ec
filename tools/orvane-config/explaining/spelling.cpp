// How flags are mistyped, and which one was meant.
#include "explaining/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

using qel::i18n::utf8_to_ustring;

/// Insertions, deletions, replacements and exchanges of neighbours that make one text of the other.
std::size_t distance(std::u16string_view a, std::u16string_view b) {
    std::vector<std::size_t> two_back, last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], two_back[j - 2] + 1);
        }
        two_back = last;
        last = row;
    }
    return last[b.size()];
}

/// Whether one of them switches on what the other switches off.
bool are_opposites(std::u16string_view a, std::u16string_view b) {
    const auto on = [](std::u16string_view words) { return words.starts_with(u"enable"); };
    const auto off = [](std::u16string_view words) { return words.starts_with(u"disable"); };
    return (on(a) && off(b)) || (off(a) && on(b));
}

const std::vector<std::string>& all_flags() {
    static const auto flags = [] {
        std::vector<std::string> all;
        for (const Reference& one : references())
            all.emplace_back(one.flag);
        return all;
    }();
    return flags;
}

} // namespace

bool is_one_of(char16_t c, std::u16string_view set) {
    return set.find(c) != set.npos;
}

bool is_invisible(char16_t c) {
    return c < 0x20 || c == 0x7F || c == 0xA0 || c == 0xAD || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069) || c == 0xFEFF;
}

std::u16string trimmed(std::u16string_view text, std::u16string_view set) {
    const auto begin = text.find_first_not_of(set);
    if (begin == text.npos) return {};
    return std::u16string(text.substr(begin, text.find_last_not_of(set) + 1 - begin));
}

std::u16string normalized(std::u16string_view text) {
    std::u16string words;
    for (char16_t c : trimmed(trimmed(text, blanks), quotes)) {
        if (c == u'_' || is_one_of(c, dashes)) c = u'-';
        words += c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
    }
    return words.substr(std::min(words.find_first_not_of(u"-/"), words.size()));
}

std::vector<std::string> most_like(const std::u16string& words, const std::vector<std::string>& texts) {
    std::vector<std::pair<std::size_t, std::string>> close;
    if (words.size() < 2) return {};
    for (const std::string& text : texts) {
        const std::u16string meant = normalized(utf8_to_ustring(text));
        if (are_opposites(words, meant)) continue;
        // Some shorten flags, as other programs allow; one letter may be as far.
        const bool shortened = words.size() > 2 && meant.starts_with(words);
        const std::size_t far = std::min(distance(words, meant), shortened ? std::size_t{1} : words.size());
        if (far <= std::max<std::size_t>(1, std::min(words.size(), meant.size()) / 4))
            close.emplace_back(far, text);
    }
    std::stable_sort(close.begin(), close.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> found;
    for (const auto& [far, text] : close)
        if (far == close[0].first && found.size() < 3) found.push_back(text);
    return found;
}

std::vector<std::string> similar_flags(const std::u16string& words) {
    return most_like(words, all_flags());
}

std::vector<std::string> flags_with(const std::u16string& words) {
    std::vector<std::string> found;
    for (const std::string& flag : all_flags())
        if ((u"-" + normalized(utf8_to_ustring(flag)) + u"-").find(u"-" + words + u"-") != flag.npos &&
            found.size() < 3)
            found.push_back(flag);
    return found;
}

const Reference* flag_of(const std::u16string& words) {
    const auto all = references();
    const auto meant = std::find_if(all.begin(), all.end(),
                                    [&](const Reference& one) { return normalized(one.wide) == words; });
    return meant == all.end() ? nullptr : &*meant;
}

std::string misspelling(std::u16string_view token, const std::string& flag) {
    const auto holds = [&](std::u16string_view set) { return token.find_first_of(set) != token.npos; };
    if (holds(dashes))
        return "it has a dash where hyphens belong, as texts copied from a document do: " + flag;
    if (holds(quotes)) return "the quotes around it have reached the server: " + flag;
    if (holds(blanks)) return "it has a blank or an invisible character at its beginning or end: " + flag;
    if (!token.starts_with(u"--") || token.starts_with(u"---"))
        return "a flag begins with two hyphens: " + flag;
    if (std::any_of(token.begin(), token.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; }))
        return "flags are written in small letters: " + flag;
    if (flag.find('_') != flag.npos) return "this flag is written with an underscore: " + flag;
    return "flags are written with hyphens, not underscores: " + flag;
}

bool begins_as_flag(std::u16string_view text) {
    const std::u16string bare = trimmed(trimmed(text, blanks), quotes);
    return !bare.empty() && (bare[0] == u'-' || is_one_of(bare[0], dashes));
}

bool resembles_a_flag(std::u16string_view text) {
    if (!begins_as_flag(text)) return false;
    // A command's own options may be short, and of one hyphen.
    const std::u16string words = normalized(text.substr(0, text.find(u'=')));
    return words.size() > 2 &&
           (text.starts_with(u"--") ? !similar_flags(words).empty() : flag_of(words) != nullptr);
}

} // namespace orvane
