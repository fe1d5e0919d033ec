// What to tell an operator about a refusal, and what to put in its place.
#include "advice.hpp"

#include "reference.hpp"

#include "qel/config/error_code.hpp"
#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <deque>
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

/// Those of the texts that are most like the words, at most three.
std::vector<std::string> most_like(const std::u16string& words, const std::vector<std::string>& texts) {
    std::vector<std::pair<std::size_t, std::string>> close;
    if (words.size() < 2) return {};
    for (const std::string& text : texts) {
        const std::u16string meant = words_of(utf8_to_ustring(text));
        // Some shorten flags, as other programs allow.
        const bool shortened = words.size() > 2 && meant.starts_with(words);
        const std::size_t far = shortened ? 0 : distance(words, meant);
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
    static const auto flags = [] {
        std::vector<std::string> all;
        for (const Reference& one : references())
            all.push_back(one.flag);
        return all;
    }();
    return most_like(words, flags);
}

/// The flag that has these words, or null.
const Reference* flag_of(const std::u16string& words) {
    const auto& all = references();
    const auto meant = std::find_if(all.begin(), all.end(), [&](const Reference& one) {
        return words_of(utf8_to_ustring(one.flag)) == words;
    });
    return meant == all.end() ? nullptr : &*meant;
}

bool begins_as_flag(std::u16string_view text) {
    return !text.empty() && (text[0] == u'-' || is_one_of(text[0], dashes));
}

bool is_flag_like(std::u16string_view text) {
    return begins_as_flag(text) || (!text.empty() && (text[0] == u'/' || is_one_of(text[0], blanks)));
}

/// Whether a flag is meant where a command's own options would be meant as well.
bool resembles_a_flag(std::u16string_view text) {
    return text.starts_with(u"--") && !similar_flags(words_of(text.substr(0, text.find(u'=')))).empty();
}

bool names_path(const Reference& one) {
    return one.value == "<directory>" || one.value == "<file>";
}

/// The flags that the library knows behind one that limits what follows.
const std::string& allowed_behind_the_limit() {
    static const std::string allowed = [] {
        std::string list;
        for (const Reference& one : references()) {
            const Line behind = {step_of(option::request_timeout(), u"1"), {{utf8_to_ustring(one.flag)}}};
            if (ask(behind).code != error_code::unrecognized_flag())
                list += (list.empty() ? "" : ", ") + one.flag;
        }
        return list;
    }();
    return allowed;
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

/// Works on one fault, at the step `at` of a line.
class Adviser {
public:
    Adviser(const Fault& fault, const Line& line, std::size_t at) : fault_(fault), line_(line), at_(at) {}

    Advice advise() {
        if (at_ == line_.size())
            missing_flag();
        else if (fault_.code == error_code::unrecognized_flag())
            unknown_token();
        else
            refused_value();
        return std::move(advice_);
    }

private:
    const Step& step() const { return line_[at_]; }
    const std::u16string& token() const { return step()[0].text; }
    std::size_t number() const { return step()[0].number; }

    void say(std::string sentence) { advice_.sentences.push_back(std::move(sentence)); }

    /// Puts words in the place of the steps [begin, end).
    void repair(std::size_t begin, std::size_t end, const std::vector<Word>& words) {
        Edit& edit = advice_.repair;
        edit.begin = begin;
        std::deque<Word> rest(words.begin(), words.end());
        const auto next = [&rest] {
            Word word = std::move(rest.front());
            rest.pop_front();
            return word;
        };
        while (!rest.empty()) {
            Step& one = edit.steps.emplace_back(Step{next()});
            if (shape_of(one[0].text) != Shape::value_flag) continue;
            // The value may have been a flag until now, and its value a stray.
            if (rest.empty() && end != line_.size()) {
                rest.assign(line_[end].begin(), line_[end].end());
                ++end;
            }
            if (!rest.empty()) one.push_back(next());
        }
        edit.end = end;
    }

    /// The flag with a value that the server takes, so that nothing else is said to lack it. What is refused with that
    /// too is left out.
    std::vector<Word> stood_in(const Step& step) const {
        const Word sample{utf8_to_ustring(reference_of(ustring_to_utf8(step[0].text))->sample),
                          step.back().number};
        if (step.size() == 2 && step[1].text == sample.text) return {};
        return {step[0], sample};
    }

    /// The end of the tokens from `from` on that are no flags, and are not meant as flags.
    std::size_t end_of_strays(std::size_t from, bool of_a_command = false) const {
        const auto is_stray = [&](const std::u16string& text) {
            if (text.empty() || shape_of(text) != Shape::no_flag) return false;
            return of_a_command ? !resembles_a_flag(text) : !begins_as_flag(text);
        };
        while (from != line_.size() && is_stray(line_[from][0].text))
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
        else if (!own_option() && !goes_on() && !misspelt() && !before_its_flag()) {
            if (took_a_flag)
                swallowed(*before, at_ - 1);
            else if (!similar() && !(before && split_by_the_shell(at_ - 1)))
                stray();
        }
    }

    /// A flag that is known, but not here.
    void limited(const Step& before) {
        const std::string flag = shown(before[0].text);
        if (token() == before[0].text)
            say(flag + " is given twice: leave one out");
        else
            say(shown(token()) + " is a flag, but the first one behind " + flag + " must be one of " +
                allowed_behind_the_limit() + ": give " + flag + " last");
        repair(at_ - 1, at_, {});
    }

    bool own_option() {
        const std::string text = ustring_to_utf8(token());
        const std::string options = " " + std::string(own_options("check")) + " ";
        if (!token().starts_with(u"--") || options.find(" " + text + " ") == options.npos) return false;
        say(text + " is an option of orvane-config: it stands before the server's flags");
        repair(at_, end_of_strays(at_ + 1), {});
        return true;
    }

    /// A plain word that may be a flag's name, but goes on with the value before it.
    bool goes_on() {
        if (at_ == 0 || is_flag_like(token())) return false;
        const Step& before = line_[at_ - 1];
        if (before.size() != 2) return false;
        const bool path = names_path(*reference_of(ustring_to_utf8(before[0].text)));
        return (!path || end_of_strays(at_) > at_ + 1) && split_by_the_shell(at_ - 1);
    }

    bool misspelt() {
        const std::u16string_view whole = token();
        const std::u16string_view separators = begins_as_flag(whole) || whole[0] == u'/' ? u"= :" : u"= ";
        const std::u16string_view name = whole.substr(0, whole.find_first_of(separators, 1));
        if (const Reference* const meant = flag_of(words_of(whole))) {
            say(misspelling(whole, meant->flag));
            advice_.suggestions.push_back(meant->flag);
            repair(at_, at_ + 1, {{utf8_to_ustring(meant->flag), number()}});
            return true;
        }
        const Reference* const meant = flag_of(words_of(name));
        if (meant == nullptr) return false;
        if (utf8_to_ustring(meant->flag) != name) say(misspelling(name, meant->flag));
        advice_.suggestions.push_back(meant->flag);
        value_behind(*meant, whole[name.size()], whole.substr(name.size() + 1));
        return true;
    }

    /// A flag that is known, and behind it in the same token a separator and the rest.
    void value_behind(const Reference& meant, char16_t separator, std::u16string_view rest) {
        std::vector<Word> words = {{utf8_to_ustring(meant.flag), number()}};
        const std::u16string value = trimmed(rest, blanks);
        if (separator == u' ' && holds_a_flag(value)) {
            for (std::size_t begin = 0; begin < value.size();) {
                const std::size_t end = std::min(value.find(u' ', begin), value.size());
                if (end != begin) words.push_back({value.substr(begin, end - begin), number()});
                begin = end + 1;
            }
            say("it holds several words, each of which is a token of its own: " + shown(Step(words)));
        } else if (meant.value.empty()) {
            say(meant.flag + " takes no value");
        } else if (value.empty() && end_of_strays(at_ + 1) != at_ + 1) {
            words.push_back(line_[at_ + 1][0]);
            say("flag and value are apart by a blank only: " + shown(Step(words)));
            return repair(at_, at_ + 2, words);
        } else {
            words.push_back({value, number()});
            const std::string how = separator == u' ' ? ", not quoted as one with its flag: " : ": ";
            say("the value is a token of its own" + how + shown(Step(words)));
        }
        repair(at_, at_ + 1, words);
    }

    static bool holds_a_flag(std::u16string_view text) {
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find(u' ', begin), text.size());
            if (shape_of(std::u16string(text.substr(begin, end - begin))) != Shape::no_flag) return true;
            begin = end + 1;
        }
        return false;
    }

    bool similar() {
        const std::u16string_view whole = token();
        const std::size_t separator = std::min(whole.find_first_of(u"= ", 1), whole.size());
        if (!is_flag_like(whole)) return false;
        advice_.suggestions = similar_flags(words_of(whole.substr(0, separator)));
        if (advice_.suggestions.empty()) return false;
        std::string sentence = "did you mean ";
        for (const std::string& flag : advice_.suggestions)
            sentence += (&flag == &advice_.suggestions[0] ? "" : " or ") + flag;
        say(sentence + "?");
        const Reference& meant = *reference_of(advice_.suggestions[0]);
        if (separator != whole.size())
            value_behind(meant, whole[separator], whole.substr(separator + 1));
        else
            repair(at_, at_ + 1, {{utf8_to_ustring(meant.flag), number()}});
        return true;
    }

    /// The flag before has taken the next flag for its value.
    void swallowed(const Step& flag, std::size_t position) {
        say(shown(flag[0].text) + " has taken " + shown(flag[1].text) +
            " for its value: is its own value missing?");
        std::vector<Word> words = stood_in({flag[0]});
        words.push_back(flag[1]);
        repair(position, position + 1, words);
    }

    bool before_its_flag() {
        if (begins_as_flag(token()) || at_ + 1 == line_.size()) return false;
        const Step& next = line_[at_ + 1];
        if (shape_of(next[0].text) != Shape::value_flag) return false;
        if (next.size() == 2 && shape_of(next[1].text) == Shape::no_flag) return false;
        if (!ask(Line{{next[0], step()[0]}}).walked()) return false;
        say("a value stands behind its flag: " + shown(Step{next[0], step()[0]}));
        std::vector<Word> words = {next[0], step()[0]};
        words.insert(words.end(), next.begin() + 1, next.end());
        repair(at_, at_ + 2, words);
        return true;
    }

    /// Whether the value of the step at `position` goes on in the tokens behind it.
    bool split_by_the_shell(std::size_t position) {
        const Step& start = line_[position];
        if (start.size() != 2) return false;
        // Commands go on with options, directories do not.
        const bool path = names_path(*reference_of(ustring_to_utf8(start[0].text)));
        const std::size_t end = end_of_strays(position + 1, !path);
        if (end == position + 1) return false;
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
        else if (at_ == 0)
            say("it is no flag");
        else if (shape_of(line_[at_ - 1][0].text) == Shape::switch_flag)
            say(shown(line_[at_ - 1][0].text) + " takes no value");
        else
            say("it is no flag, and the flag before it has its value");
        repair(at_, end_of_strays(at_ + 1), {});
    }

    void refused_value() {
        const Reference& reference = *reference_of(ustring_to_utf8(token()));
        if (step().size() == 1) {
            say("the line ends here, but " + shown(token()) + " needs a value: " + reference.value);
            return repair(at_, at_ + 1, stood_in(step()));
        }
        const Word& value = step()[1];
        if (shape_of(value.text) != Shape::no_flag) return swallowed(step(), at_);
        if (quoted(value) || one_of_the_words(reference, value) || split_by_the_shell(at_) || exchanged())
            return;
        if (ask(Line{step()}).walked()) // what came before is in its way
            say(reference.flag + ": " + reference.relations);
        else if (fault_.code == error_code::out_of_range())
            say(reference.flag + ": " + reference.meaning);
        else
            say("the form is " + reference.flag + " " + reference.value +
                ", for example: " + reference.example);
        repair(at_, at_ + 1, stood_in(step()));
    }

    bool replaced(const Word& value, const std::string& sentence, const char* end = "") {
        const Step better = {step()[0], value};
        if (value.text == step()[1].text || !ask(Line{better}).walked()) return false;
        say(sentence + shown(better) + end);
        repair(at_, at_ + 1, better);
        return true;
    }

    bool quoted(const Word& value) {
        for (const auto& [set, what] : {std::pair(blanks, "blanks"), std::pair(quotes, "quotes")})
            if (replaced({trimmed(value.text, set), value.number},
                         std::string("there are ") + what + " in the value itself; without them: "))
                return true;
        return false;
    }

    bool one_of_the_words(const Reference& reference, const Word& value) {
        const std::vector<std::string> like = most_like(words_of(value.text), keywords(reference));
        return !like.empty() && replaced({utf8_to_ustring(like[0]), value.number}, "did you mean ", "?");
    }

    /// Another flag nearby has this one's value, and this one that flag's.
    bool exchanged() {
        constexpr std::size_t near = 10;
        if (fault_.code == error_code::out_of_range() || ask(Line{step()}).walked()) return false;
        const std::size_t last = std::min(at_ + near, line_.size() - 1);
        for (std::size_t other = at_ - std::min(at_, near); other <= last; ++other) {
            if (other == at_ || line_[other].size() != 2 || ask(Line{line_[other]}).walked()) continue;
            Step one = step(), two = line_[other];
            std::swap(one[1], two[1]);
            if (!ask(Line{one}).walked() || !ask(Line{two}).walked()) continue;
            say("are two values exchanged? " + shown(one) + " " + shown(two));
            const std::size_t begin = std::min(at_, other);
            const std::size_t end = std::max(at_, other);
            std::vector<Word> words = begin == at_ ? one : two;
            for (std::size_t i = begin + 1; i != end; ++i)
                words.insert(words.end(), line_[i].begin(), line_[i].end());
            const Step& behind = begin == at_ ? two : one;
            words.insert(words.end(), behind.begin(), behind.end());
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

/// Characters that nobody sees in a line.
bool is_invisible(char16_t c) {
    return c < 0x20 || c == 0x7F || c == 0xA0 || c == 0xAD || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069) || c == 0xFEFF;
}

} // namespace

Advice advise(const Fault& fault, const Line& line, std::size_t position) {
    return Adviser(fault, line, position).advise();
}

std::string shown(const std::u16string& token) {
    constexpr std::u16string_view plain =
        u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:,=@%+";
    const bool visible = std::none_of(token.begin(), token.end(), is_invisible);
    const bool safe = !token.empty() && std::all_of(token.begin(), token.end(), [&](char16_t c) {
        return is_one_of(c, plain) || (c >= 0x80 && visible);
    });
    std::u16string quoted;
    for (const char16_t c : token) {
        if (is_invisible(c)) {
            quoted += u"\\u";
            for (int shift = 12; shift >= 0; shift -= 4)
                quoted += u"0123456789abcdef"[c >> shift & 15];
        } else if (c == u'\'') {
            quoted += visible ? u"'\\''" : u"\\'";
        } else {
            quoted += !visible && c == u'\\' ? u"\\\\" : std::u16string(1, c);
        }
    }
    const std::string text = ustring_to_utf8(quoted);
    return safe ? text : (visible ? "'" : "$'") + text + "'";
}

std::string shown(const Step& step) {
    std::string text;
    for (const Word& word : step)
        text += (text.empty() ? "" : " ") + shown(word.text);
    return text;
}

std::string numbers_of(const Step& step) {
    // One token may have become two, or two may have changed places.
    const auto [first, last] = std::minmax(step.front().number, step.back().number);
    if (first == last) return "token " + std::to_string(first);
    return "tokens " + std::to_string(first) + " and " + std::to_string(last);
}

} // namespace orvane
