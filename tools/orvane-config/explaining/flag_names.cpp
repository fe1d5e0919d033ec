// Rules about tokens that were meant as flags.
#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/rules.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// What is wrong with the spelling of a token whose letters are the flag's.
std::string misspelling(std::u16string_view token, const Reference& flag) {
    const std::string meant(flag.flag);
    const auto holds = [&](std::u16string_view set) { return token.find_first_of(set) != token.npos; };
    const std::u16string seen = visible(token);
    const std::u16string outer = trimmed(seen, u" ");
    if (token.find(u'\x1B') != token.npos) return "it contains a terminal's colour codes: " + meant;
    if (holds(dashes)) return "it contains a dash instead of a hyphen: " + meant;
    if (holds(quotes)) return "the quotes around it were passed to the server: " + meant;
    if (seen.size() != token.size() || outer != seen)
        return "it contains a space or an invisible character: " + meant;
    if (folded(token) != seen) return "it contains letters that only look like the flag's: " + meant;
    if (holds(u"[]<>(){}")) return "the brackets around it are not part of the flag: " + meant;
    if (outer.front() == u'#') return "the # before it is not part of the flag: " + meant;
    if (!outer.starts_with(u"--") || outer.starts_with(u"---"))
        return "a flag begins with two hyphens: " + meant;
    if (std::u16string_view(u",;:.\\=").find(outer.back()) != std::u16string_view::npos)
        return "the mark after the flag's name is not part of it: " + meant;
    if (std::any_of(token.begin(), token.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; }))
        return "flags are written in lower case: " + meant;
    if (meant.find('_') != meant.npos) return "this flag is written with an underscore: " + meant;
    if (holds(u"_.")) return "flags are written with hyphens, not underscores or dots: " + meant;
    return "flags are written with a hyphen between words: " + meant;
}

Advice switch_with_value(const FaultInLine& fault, const Reference& meant, std::u16string_view value) {
    const std::string flag(meant.flag);
    if (means_off(value))
        return remove(fault, fault.at, fault.at + 1,
                      flag + " takes no value; to switch it off, leave it out");
    Advice advice{{flag + " takes no value" +
                   (value.empty() ? "" : ": leave " + shown(std::u16string(value)) + " out")},
                  {},
                  {}};
    advice.edit = edit_of(fault, fault.at, fault.at + 1, {{std::u16string(meant.wide), fault.number()}});
    return advice;
}

/// The flag, and the value after it cleaned in the same way: in "name": "value", both have quotes.
Advice with_clean_follower(const FaultInLine& fault, const Reference& meant, std::string sentence) {
    Token flag{std::u16string(meant.wide), fault.number()};
    const Occurrence* const next = fault.after();
    const bool notation = fault.token().find_first_of(u"\"'`,:\u201C\u201D") != std::u16string::npos ||
                          trimmed(fault.token(), u"[]<>").size() != fault.token().size();
    if (notation && !meant.is_switch() && next != nullptr && kind_of((*next)[0].text) == FlagKind::no_flag &&
        !begins_as_flag((*next)[0].text)) {
        const std::u16string value = clean_value(meant, (*next)[0].text);
        if (value != (*next)[0].text)
            return replace(fault, fault.at, fault.at + 2, {flag, {value, (*next)[0].number}},
                           "quotes, commas and colons around flag and value are not part of them: ");
    }
    return {{std::move(sentence)}, {}, edit_of(fault, fault.at, fault.at + 1, {flag})};
}

bool is_given(const FaultInLine& fault, const Reference& flag) {
    constexpr std::size_t near = 50;
    const std::size_t end = std::min(fault.line.size(), fault.at + near);
    for (std::size_t i = fault.at - std::min(fault.at, near); i != end; ++i)
        if (fault.line[i][0].text == flag.wide) return true;
    return false;
}

/// Whether it takes the value that follows, or none where none does.
bool fits(const FaultInLine& fault, const Reference& flag) {
    if (has_strays(fault.line, fault.at + 1) == flag.is_switch()) return false;
    return flag.is_switch() || takes({std::u16string(flag.wide)}, (*fault.after())[0].text);
}

/// The flag that fits; preferably one that does not take any text, and one that is not given yet.
const Reference& likeliest(const FaultInLine& fault, const std::vector<const Reference*>& flags) {
    const auto rank = [&](const Reference* flag) {
        const bool fit = fits(fault, *flag);
        const bool picky = fit && !flag->is_switch() && !takes({std::u16string(flag->wide)}, u"?");
        return (fit ? 4 : 0) + (picky ? 2 : 0) + (is_given(fault, *flag) ? 0 : 1);
    };
    return flags.size() == 1
               ? *flags[0]
               : **std::max_element(flags.begin(), flags.end(),
                                    [&](const auto* a, const auto* b) { return rank(a) < rank(b); });
}

bool is_cut_short(std::u16string_view name, const Reference* flag) {
    return normalized(flag->wide).starts_with(normalized(name));
}

/// Those that fit what follows, of the flags that begin like this.
std::vector<const Reference*> flags_cut_short(const FaultInLine& fault, std::u16string_view name) {
    std::vector<const Reference*> flags;
    for (const Reference& one : references())
        if (is_cut_short(name, &one) && fits(fault, one)) flags.push_back(&one);
    return flags;
}

} // namespace

Advice with_value_after(const FaultInLine& fault, const Reference& meant, char16_t separator,
                        std::u16string_view rest, std::vector<std::string> sentences) {
    const Token flag{std::u16string(meant.wide), fault.number()};
    const bool blank = is_one_of(separator, blanks);
    const std::u16string given = blank ? trimmed(rest, u" =\t\u00A0") : std::u16string(rest);
    const std::u16string value = clean_value(meant, given);
    Advice advice;
    if (meant.is_switch()) {
        advice = switch_with_value(fault, meant, value);
    } else if (value.empty() && has_strays(fault.line, fault.at + 1)) {
        Token next = fault.line[fault.at + 1][0];
        next.text = clean_value(meant, next.text);
        advice = replace(fault, fault.at, fault.at + 2, {flag, next},
                         "separate the flag and its value with a space: ");
    } else if (value.empty()) {
        advice = {
            {"its value is missing: " + std::string(meant.flag) + " " + std::string(meant.value)}, {}, {}};
        advice.edit = edit_of(fault, fault.at, fault.at + 1, with_placeholder({flag}));
    } else {
        const bool follows = !takes(flag, value) && !has_unit_after(fault.line, fault.at);
        std::u16string better = value;
        if (follows)
            for (const Reading& reading : readings(meant, value))
                if (better == value && reading.sample.empty() && takes(flag, reading.value))
                    better = reading.value;
        advice = replace(fault, fault.at, fault.at + 1, {flag, {better, fault.number()}},
                         blank ? "pass the flag and its value as two arguments, not quoted as one: "
                               : "pass the value as a separate argument: ");
    }
    advice.sentences.insert(advice.sentences.begin(), sentences.begin(), sentences.end());
    return advice;
}

std::optional<Advice> several_words(const FaultInLine& fault) {
    std::u16string text = fault.token();
    // Source code breaks lines like this.
    for (std::size_t at = 0; (at = text.find(u"\\n--", at)) != text.npos;)
        text.replace(at, 2, u" ");
    const auto words = split_words(text, blanks);
    if (words.size() < 2 || !is_flag_like(words[0])) return std::nullopt;
    std::vector<Token> tokens;
    tokens.reserve(words.size());
    for (const std::u16string& word : words)
        tokens.push_back({word, fault.number()});
    constexpr auto sentence = "this is several words in one; pass each as a separate argument: ";
    if (std::any_of(words.begin() + 1, words.end(), is_meant_as_flag))
        return replace(fault, fault.at, fault.at + 1, tokens, sentence);
    if (!is_mark(words.back())) return std::nullopt;
    const std::u16string_view rest = std::u16string_view(text).substr(0, text.find_last_of(words.back()[0]));
    return replace(fault, fault.at, fault.at + 1, {{trimmed(rest, blanks), fault.number()}},
                   shown(words.back()) + " from the end of a line was passed to the server; leave it out: ");
}

std::optional<Advice> misspelt(const FaultInLine& fault) {
    const std::u16string& token = fault.token();
    const bool open = token.back() == u'='; // its value follows
    if (const Reference* const meant = open ? nullptr : flag_spelled(token)) {
        Advice advice = with_clean_follower(fault, *meant, misspelling(token, *meant));
        advice.suggestions = {std::u16string(meant->wide)};
        return advice;
    }
    const auto [name, separator, rest] = split_token(token);
    const Reference* const meant = separator == 0 ? nullptr : flag_spelled(name);
    if (meant == nullptr) return std::nullopt;
    std::vector<std::string> sentences;
    if (meant->wide != name) sentences.push_back(misspelling(name, *meant));
    Advice advice = with_value_after(fault, *meant, separator, rest, std::move(sentences));
    advice.suggestions = {std::u16string(meant->wide)};
    return advice;
}

std::optional<Advice> attached_value(const FaultInLine& fault) {
    const std::u16string_view token = fault.token();
    const Reference* longest = nullptr;
    for (const Reference& one : references()) {
        const std::size_t size = one.wide.size();
        if (one.is_switch() || token.size() <= size || !token.starts_with(one.wide)) continue;
        if (!is_one_of(token[size], u"0123456789/.,;\"'<[*")) continue;
        if (longest == nullptr || longest->wide.size() < size) longest = &one;
    }
    if (longest == nullptr) return std::nullopt;
    const Token flag{std::u16string(longest->wide), fault.number()};
    const std::u16string value = trimmed(token.substr(longest->wide.size()), u",;\"'<>[]");
    if (!takes(flag, value)) return std::nullopt;
    Advice advice = replace(fault, fault.at, fault.at + 1, {flag, {value, fault.number()}},
                            "separate the flag and its value with a space: ");
    advice.suggestions = {flag.text};
    return advice;
}

std::optional<Advice> similar_name(const FaultInLine& fault) {
    if (!is_flag_like(fault.token())) return std::nullopt;
    const auto [name, separator, rest] = split_token(fault.token());
    auto flags = flags_like(name);
    if (flags.empty()) return std::nullopt;
    const auto longer = flags_cut_short(fault, name);
    if (longer.size() == 2 || longer.size() == 3) flags = longer;
    // A word that is cut short has no letter wrong that would speak for one of them.
    const bool is_any =
        flags.size() > 1 && std::ranges::all_of(flags, [&, &word = name](const Reference* flag) {
            return is_cut_short(word, flag);
        });
    const std::string sentence = "did you mean " + joined(flags, " or ", &Reference::flag);
    Advice advice;
    const Reference& meant = likeliest(fault, flags);
    if (is_any) // which one, nobody can tell
        advice = skip(fault, fault.at, end_of_strays(fault.line, fault.at + 1), sentence + "?");
    else if (separator != 0)
        advice = with_value_after(fault, meant, separator, rest, {sentence + "?"});
    else
        advice = with_clean_follower(fault, meant, sentence + "?");
    for (const Reference* flag : flags)
        advice.suggestions.emplace_back(flag->wide);
    return advice;
}

std::optional<Advice> unknown_name(const FaultInLine& fault) {
    if (!begins_as_flag(fault.token())) return std::nullopt;
    return skip(
        fault, fault.at, end_of_strays(fault.line, fault.at + 1),
        "there is no such flag, and none with a similar name; 'orvane-config explain' lists them all");
}

} // namespace orvane
