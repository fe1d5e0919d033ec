// What to tell an operator about a refusal, and the line with it repaired.
#include "advice.hpp"

#include "escape.hpp"
#include "reference.hpp"

#include "qel/config/error_code.hpp"
#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace orvane {
namespace {

namespace error_code = qel::config::error_code;
namespace option = qel::config::option;
using qel::i18n::ustring_to_utf8;
using qel::i18n::utf8_to_ustring;

constexpr std::u16string_view dashes = u"\u2010\u2011\u2012\u2013\u2014\u2015\u2212";
constexpr std::u16string_view quotes = u"\"'\u2018\u2019\u201C\u201D";
constexpr std::u16string_view blanks = u" \t\r\n\u00A0";

bool is_one_of(char16_t c, std::u16string_view set) {
    return set.find(c) != set.npos;
}

std::u16string trimmed(std::u16string_view text, std::u16string_view of) {
    const auto begin = text.find_first_not_of(of);
    if (begin == text.npos) return {};
    return std::u16string(text.substr(begin, text.find_last_not_of(of) + 1 - begin));
}

/// The words of a flag, without what is often mistyped around and between them: "--Log_Root " gives "log-root".
std::u16string words_of(std::u16string_view text) {
    std::u16string words;
    for (char16_t c : trimmed(text, blanks)) {
        if (c == u'_' || is_one_of(c, dashes)) c = u'-';
        words += c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
    }
    return words.substr(std::min(words.find_first_not_of(u"-/"), words.size()));
}

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

/// The flags that are most like the words, at most three.
std::vector<std::string> similar_flags(const std::u16string& words) {
    std::vector<std::pair<std::size_t, std::string>> close;
    if (words.size() < 2) return {};
    for (const Reference& one : references()) {
        const std::u16string flag = words_of(utf8_to_ustring(one.flag));
        // Some shorten flags, as other programs allow.
        const bool shortened = words.size() > 2 && flag.starts_with(words);
        const std::size_t far = shortened ? 0 : distance(words, flag);
        if (far <= std::max<std::size_t>(1, std::min(words.size(), flag.size()) / 4))
            close.emplace_back(far, one.flag);
    }
    std::stable_sort(close.begin(), close.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> flags;
    for (const auto& [far, flag] : close)
        if (far == close[0].first && flags.size() < 3) flags.push_back(flag);
    return flags;
}

/// What is wrong with the spelling of a token whose words are a flag's.
std::string misspelling(std::u16string_view token, const std::string& flag) {
    const auto holds = [&](std::u16string_view set) { return token.find_first_of(set) != token.npos; };
    if (holds(dashes))
        return "it has a dash where hyphens belong, as texts copied from a document do: " + flag;
    if (holds(blanks)) return "it has a blank at its beginning or end: " + flag;
    if (!token.starts_with(u"--") || token.starts_with(u"---"))
        return "a flag begins with two hyphens: " + flag;
    if (std::any_of(token.begin(), token.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; }))
        return "flags are written in small letters: " + flag;
    if (flag.find('_') != flag.npos) return "this flag is written with an underscore: " + flag;
    return "flags are written with hyphens, not underscores: " + flag;
}

/// Works on one fault.
class Adviser {
public:
    explicit Adviser(const Fault& fault) : fault_(fault), line_(fault.line), at_(fault.position) {}

    Advice advise() {
        if (at_ == line_.size())
            missing_flag();
        else if (fault_.answer.code == error_code::unrecognized_flag())
            unknown_token();
        else
            refused_value();
        return std::move(advice_);
    }

private:
    const Step& step() const { return line_[at_]; }
    const std::u16string& token() const { return step()[0].text; }

    void say(std::string sentence) { advice_.sentences.push_back(std::move(sentence)); }

    /// The line with other words in place of the steps [begin, end).
    void repair(std::size_t begin, std::size_t end, const std::vector<Word>& words) {
        std::vector<Word> all;
        for (std::size_t i = 0; i <= line_.size(); ++i) {
            if (i == begin) all.insert(all.end(), words.begin(), words.end());
            const bool kept = i < line_.size() && (i < begin || i >= end);
            if (kept) all.insert(all.end(), line_[i].begin(), line_[i].end());
        }
        Tokens tokens;
        for (const Word& word : all)
            tokens.push_back(word.text);
        advice_.repaired = steps_of(tokens);
        auto word = all.begin();
        for (Step& step : advice_.repaired)
            for (Word& renumbered : step)
                renumbered.number = (word++)->number;
    }

    /// The end of the tokens from `from` on that are no flags.
    std::size_t end_of_strays(std::size_t from) const {
        while (from != line_.size() && shape_of(line_[from][0].text) == Shape::no_flag)
            ++from;
        return from;
    }

    void missing_flag() {
        const std::string flag = ustring_to_utf8(option::auto_deploy_root());
        say(flag + " <directory> is required, and missing");
        advice_.suggestions.push_back(flag);
        // A directory that no other one lies in, or holds: the other rules can be checked.
        repair(0, 0, step_of(option::auto_deploy_root(), u"/?"));
    }

    void unknown_token() {
        const Step* const before = at_ == 0 ? nullptr : &line_[at_ - 1];
        const bool took_a_flag =
            before && before->size() == 2 && shape_of((*before)[1].text) != Shape::no_flag;
        if (before && shape_of(token()) != Shape::no_flag)
            limited(*before);
        else if (trimmed(token(), blanks).empty())
            say("the token is empty: was a variable not set?"), repair(at_, at_ + 1, {});
        else if (!misspelt() && !before_its_flag()) {
            if (took_a_flag)
                swallowed(*before, at_ - 1);
            else if (!similar() && !(at_ != 0 && split_by_the_shell(at_ - 1)))
                stray();
        }
    }

    /// A flag that is known, but not here.
    void limited(const Step& before) {
        std::string allowed;
        for (const Reference& one : references()) {
            const Line behind = {step_of(option::request_timeout(), u"1"), {{utf8_to_ustring(one.flag)}}};
            if (ask(behind).code != error_code::unrecognized_flag())
                allowed += (allowed.empty() ? "" : ", ") + one.flag;
        }
        const std::string flag = shown(before[0].text);
        say(shown(token()) + " is a flag, but the first one behind " + flag + " must be one of " + allowed +
            ": give " + flag + " last");
        repair(at_ - 1, at_, {});
    }

    bool misspelt() {
        const std::u16string_view whole = token();
        const auto separator = std::find_if(whole.begin() + 1, whole.end(),
                                            [](char16_t c) { return c == u'=' || c == u' ' || c == u':'; });
        for (const std::u16string_view name :
             {whole, whole.substr(0, static_cast<std::size_t>(separator - whole.begin()))}) {
            const std::u16string words = words_of(name);
            const auto& all = references();
            const auto meant = std::find_if(all.begin(), all.end(), [&](const Reference& one) {
                return words_of(utf8_to_ustring(one.flag)) == words;
            });
            if (meant == all.end()) continue;

            const std::u16string flag = utf8_to_ustring(meant->flag);
            std::vector<Word> words_meant = {{flag, step()[0].number}};
            advice_.suggestions.push_back(meant->flag);
            if (name != flag) say(misspelling(name, meant->flag));
            if (name.size() != whole.size()) {
                const std::u16string value = trimmed(whole.substr(name.size() + 1), blanks);
                if (meant->value.empty()) {
                    say(meant->flag + " takes no value");
                } else {
                    const std::string how = *separator == u' ' ? ", not quoted as one with its flag: " : ": ";
                    say("the value is a token of its own" + how + meant->flag + " " + shown(value));
                    words_meant.push_back({value, step()[0].number});
                }
            }
            repair(at_, at_ + 1, words_meant);
            return true;
        }
        return false;
    }

    static bool is_flag_like(std::u16string_view text) {
        return is_one_of(text[0], u"-/") || is_one_of(text[0], dashes) || is_one_of(text[0], blanks);
    }

    bool similar() {
        const std::u16string_view whole = token();
        const std::size_t equals = std::min(whole.find(u'='), whole.size());
        if (!is_flag_like(whole)) return false;
        advice_.suggestions = similar_flags(words_of(whole.substr(0, equals)));
        if (advice_.suggestions.empty()) return false;
        std::string sentence = "did you mean ";
        for (const std::string& flag : advice_.suggestions)
            sentence += (&flag == &advice_.suggestions[0] ? "" : " or ") + flag;
        say(sentence + "?");

        std::vector<Word> meant = {{utf8_to_ustring(advice_.suggestions[0]), step()[0].number}};
        if (equals != whole.size()) {
            meant.push_back({std::u16string(whole.substr(equals + 1)), step()[0].number});
            say("a value is a token of its own");
        }
        repair(at_, at_ + 1, meant);
        return true;
    }

    /// The flag before has taken the next flag for its value.
    void swallowed(const Step& flag, std::size_t position) {
        say(shown(flag[0].text) + " has taken " + shown(flag[1].text) +
            " for its value: is its own value missing?");
        repair(position, position + 1, {flag[1]});
    }

    bool before_its_flag() {
        if (is_flag_like(token()) && token()[0] != u'/') return false;
        if (at_ + 1 == line_.size() || shape_of(line_[at_ + 1][0].text) != Shape::value_flag) return false;
        const Step& next = line_[at_ + 1];
        if (next.size() == 2 && shape_of(next[1].text) == Shape::no_flag) return false;
        say("a value stands behind its flag: " + shown(next[0].text) + " " + shown(token()));
        std::vector<Word> words = {next[0], step()[0]};
        words.insert(words.end(), next.begin() + 1, next.end());
        repair(at_, at_ + 2, words);
        return true;
    }

    /// Whether the value of the step at `position` goes on in the tokens behind it.
    bool split_by_the_shell(std::size_t position) {
        const Step& start = line_[position];
        const std::size_t end = end_of_strays(position + 1);
        if (start.size() != 2 || end == position + 1) return false;
        // Commands go on with options, directories do not.
        const std::string form = reference_of(ustring_to_utf8(start[0].text))->value;
        if (line_[position + 1][0].text.starts_with(u'-') && (form == "<directory>" || form == "<file>"))
            return false;
        Step joined = start;
        for (std::size_t i = position + 1; i != end; ++i)
            joined[1].text += u" " + line_[i][0].text;
        if (!ask(Line{joined}).walked()) return false;
        say("was a value with a blank split by the shell? Quote it: " + shown(joined));
        repair(position, end, joined);
        return true;
    }

    void stray() {
        if (is_flag_like(token()))
            say("no flag is like it; 'orvane-config flags' lists them all");
        else if (at_ != 0 && shape_of(line_[at_ - 1][0].text) == Shape::switch_flag)
            say(shown(line_[at_ - 1][0].text) + " takes no value");
        else
            say("it is no flag, and the flag before it has its value");
        repair(at_, end_of_strays(at_), {});
    }

    void refused_value() {
        const Reference* const reference = reference_of(ustring_to_utf8(token()));
        if (step().size() == 1) {
            say("the line ends here, but " + shown(token()) + " needs a value: " + reference->value);
            return repair(at_, at_ + 1, {});
        }
        const Word& value = step()[1];
        if (shape_of(value.text) != Shape::no_flag) return swallowed(step(), at_);
        if (quoted(value) || split_by_the_shell(at_) || exchanged()) return;
        say("the form is " + reference->flag + " " + reference->value +
            ", for example: " + reference->example);
        repair(at_, at_ + 1, {});
    }

    bool quoted(const Word& value) {
        for (const auto& [set, what] : {std::pair(blanks, "blanks"), std::pair(quotes, "quotes")}) {
            const Word bare{trimmed(value.text, set), value.number};
            if (bare.text == value.text || !ask(Line{{step()[0], bare}}).walked()) continue;
            say(std::string("there are ") + what +
                " in the value itself; without them: " + shown(Step{step()[0], bare}));
            repair(at_, at_ + 1, {step()[0], bare});
            return true;
        }
        return false;
    }

    /// Another flag has this one's value, and this one that flag's.
    bool exchanged() {
        if (ask(Line{step()}).walked()) return false; // what came before is in its way, not its value
        for (std::size_t other = 0; other != line_.size(); ++other) {
            if (other == at_ || line_[other].size() != 2) continue;
            const bool neighbour = other + 1 == at_ || other == at_ + 1;
            if (!neighbour && ask(Line{line_[other]}).walked()) continue;
            Step one = step(), two = line_[other];
            std::swap(one[1], two[1]);
            if (!ask(Line{one}).walked() || !ask(Line{two}).walked()) continue;
            say("are two values exchanged? " + shown(one) + " " + shown(two));
            const std::size_t begin = std::min(at_, other);
            const std::size_t end = std::max(at_, other);
            std::vector<Word> words = begin == at_ ? one : two;
            for (std::size_t i = begin + 1; i != end; ++i)
                words.insert(words.end(), line_[i].begin(), line_[i].end());
            const Step& last = begin == at_ ? two : one;
            words.insert(words.end(), last.begin(), last.end());
            repair(begin, end + 1, words);
            return true;
        }
        return false;
    }

    const Fault& fault_;
    const Line& line_;
    std::size_t at_;
    Advice advice_{};
};

} // namespace

Advice advise(const Fault& fault) {
    return Adviser(fault).advise();
}

std::string shown(const std::u16string& token) {
    const std::string text = escape(ustring_to_utf8(token));
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:,=@%+";
    const bool safe = std::all_of(text.begin(), text.end(), [&](char c) {
        return plain.find(c) != plain.npos || static_cast<unsigned char>(c) >= 0x80;
    });
    return safe && !text.empty() ? text : "'" + text + "'";
}

std::string shown(const Step& step) {
    std::string text;
    for (const Word& word : step)
        text += (text.empty() ? "" : " ") + shown(word.text);
    return text;
}

std::string numbers_of(const Step& step) {
    const std::string first = std::to_string(step.front().number);
    if (step.size() == 1) return "token " + first;
    return "tokens " + first + " and " + std::to_string(step.back().number);
}

} // namespace orvane
