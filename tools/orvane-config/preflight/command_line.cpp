// A command in a setting.
#include "preflight/command_line.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace orvane::preflight {
namespace {

struct Word {
    std::u16string text{};
    bool quoted = false;
};

/// At blanks outside of quotes.
std::vector<Word> split_words(std::u16string_view command) {
    std::vector<Word> words;
    char16_t quote = 0;
    bool inside = false;
    for (const char16_t c : command) {
        const bool blank = quote == 0 && (c == u' ' || c == u'\t');
        if (blank || !inside) {
            inside = !blank;
            if (inside) words.emplace_back();
        }
        if (blank) continue;
        if (quote == 0 && (c == u'"' || c == u'\'')) {
            quote = c;
            words.back().quoted = true;
        } else if (c == quote) {
            quote = 0;
        } else {
            words.back().text += c;
        }
    }
    return words;
}

bool is_shell_syntax(const Word& word) {
    constexpr std::array<std::u16string_view, 13> words = {u"|",  u"||", u"&",    u"&&", u";",  u"<",  u">",
                                                           u">>", u"2>", u"2>&1", u">&", u"&>", u"2>>"};
    constexpr std::array<std::u16string_view, 8> beginnings = {u">", u"<",  u"2>", u"&>",
                                                               u"|", u"$(", u"`",  u"~/"};
    if (word.quoted) return false;
    const std::u16string_view text = word.text;
    return std::ranges::find(words, text) != words.end() || text.ends_with(u';') || text.ends_with(u'&') ||
           text.find(u"$(") != text.npos ||
           std::ranges::any_of(beginnings, [&](auto beginning) { return text.starts_with(beginning); });
}

/// NAME=value before a program sets a variable.
bool is_assignment(const Word& word) {
    const auto equals = word.text.find(u'=');
    return equals != word.text.npos && equals != 0 &&
           std::all_of(word.text.begin(), word.text.begin() + static_cast<std::ptrdiff_t>(equals),
                       [](char16_t c) {
                           return c == u'_' || (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') ||
                                  (c >= u'a' && c <= u'z');
                       });
}

/// Options without a value, or with it in the same word, are of no matter.
EnvWords program_after_options(const std::vector<Word>& words) {
    constexpr std::array<std::u16string_view, 2> with_value = {u"-u", u"--unset"};
    bool options = true, unknown_path = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::u16string& text = words[i].text;
        if (options && text.starts_with(u'-')) {
            options = text != u"--";
            if (std::ranges::find(with_value, text) != with_value.end()) ++i;
        } else if (text.find(u'=') != text.npos) {
            options = false;
            unknown_path = unknown_path || text.starts_with(u"PATH=");
        } else {
            return {unknown_path ? u"" : text, false};
        }
    }
    return {};
}

} // namespace

CommandWords words_of(const std::u16string& command) {
    const std::vector<Word> words = split_words(command);
    if (words.empty()) return {};
    CommandWords found{words.front().text, {}};
    if (is_assignment(words.front())) found.shell_syntax = words.front().text;
    for (const Word& word : words)
        if (found.shell_syntax.empty() && is_shell_syntax(word)) found.shell_syntax = word.text;
    return found;
}

EnvWords words_of_env(const std::u16string& argument) {
    constexpr std::array<std::u16string_view, 4> splits = {u"-S", u"-vS", u"--split-string=",
                                                           u"--split-string "};
    const auto begins = [&](std::u16string_view option) { return argument.starts_with(option); };
    const auto* const split = std::ranges::find_if(splits, begins);
    if (split != splits.end()) return program_after_options(split_words(argument.substr(split->size())));
    const bool blank = argument.find_first_of(u" \t") != argument.npos;
    if (argument.starts_with(u'-')) return {{}, blank};
    return {argument, false};
}

} // namespace orvane::preflight
