// What to tell an operator about a refusal, and what to put in its place.
#include "explaining/advice.hpp"

#include "explaining/spelling.hpp"
#include "printing/quoting.hpp"
#include "verbs/option_table.hpp"

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

/// Also "/wait", but no absolute path.
bool is_flag_like(std::u16string_view text) {
    return begins_as_flag(text) || (text.size() > 1 && text[0] == u'/' &&
                                    text.substr(1, text.find_first_of(u"=:") - 1).find(u'/') == text.npos);
}

bool all_digits(std::u16string_view text) {
    return !text.empty() && text.find_first_not_of(u"0123456789") == text.npos;
}

/// Whether the token is what is left of a name with blanks in it.
bool may_belong_to_a_path(std::u16string_view token) {
    constexpr std::u16string_view punctuation = u"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    return !token.empty() && !is_one_of(token[0], punctuation) && !is_one_of(token[0], blanks) &&
           !is_one_of(token[0], quotes) && token.find_first_of(u"<>|&;") == token.npos &&
           flag_of(normalized(token)) == nullptr;
}

/// What other programs let follow a switch.
bool means_off(std::u16string_view text) {
    const std::u16string word = normalized(text);
    return word == u"false" || word == u"no" || word == u"off" || word == u"0";
}

/// The flags that the library knows behind one that limits what follows.
const std::string& allowed_behind_the_limit() {
    static const std::string allowed = [] {
        std::string list;
        for (const Reference& one : references()) {
            const CommandLine behind = {
                occurrence_of(std::u16string(flag_with(Trait::limits_next).wide), u"1"),
                {{std::u16string(one.wide)}}};
            if (ask(behind).code != error_code::unrecognized_flag())
                list.append(list.empty() ? "" : ", ").append(one.flag);
        }
        return list;
    }();
    return allowed;
}

/// Works on one fault, at the occurrence `at` of a line.
class Adviser {
public:
    Adviser(const Fault& fault, const CommandLine& line, std::size_t at)
        : fault_(fault), line_(line), at_(at) {}

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
    const Occurrence& occurrence() const { return line_[at_]; }
    const std::u16string& token() const { return occurrence()[0].text; }
    std::size_t number() const { return occurrence()[0].number; }

    void say(std::string sentence) { advice_.sentences.push_back(std::move(sentence)); }

    /// Puts words in the place of the occurrences [begin, end).
    void repair(std::size_t begin, std::size_t end, const std::vector<Token>& words) {
        Edit& edit = advice_.repair;
        edit.begin = begin;
        std::deque<Token> rest(words.begin(), words.end());
        const auto next = [&rest] {
            Token word = std::move(rest.front());
            rest.pop_front();
            return word;
        };
        while (!rest.empty()) {
            Occurrence& one = edit.occurrences.emplace_back(Occurrence{next()});
            if (kind_of(one[0].text) != FlagKind::value_flag) continue;
            // The value may have been a flag until now, and its value a stray.
            if (rest.empty() && end != line_.size()) {
                rest.assign(line_[end].begin(), line_[end].end());
                ++end;
            }
            if (!rest.empty()) one.push_back(next());
        }
        edit.end = end;
    }

    /// The flag with a value that the server takes, so that nothing else is said to lack it; one that breaks no rule.
    /// What is refused with that too is left out.
    static std::vector<Token> placeholder(const Occurrence& occurrence) {
        const Reference& reference = *reference_of(occurrence[0].text);
        Token value{utf8_to_ustring(reference.sample()), occurrence.back().number, true};
        if (const auto words = keywords(reference); !words.empty())
            value.text = utf8_to_ustring(words[0]);
        else if (reference.names_path())
            value.text = u"/?" + utf8_to_ustring(std::to_string(value.number));
        else if (reference.value.starts_with("[<host"))
            value.text = u"0";
        if (occurrence.size() == 2 && occurrence[1].invented) return {};
        return {occurrence[0], value};
    }

    /// The end of the tokens from `from` on that are no flags, and are not meant as flags.
    std::size_t end_of_strays(std::size_t from, bool of_a_command = false) const {
        const auto is_stray = [&](const std::u16string& text) {
            if (text.empty() || kind_of(text) != FlagKind::no_flag) return false;
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
        repair(0, 0, occurrence_of(option::auto_deploy_root(), u"/?"));
    }

    void unknown_token() {
        const Occurrence* const before = at_ == 0 ? nullptr : &line_[at_ - 1];
        if (before && kind_of(token()) != FlagKind::no_flag)
            limited(*before);
        else if (token().empty())
            say("the token is empty: was a variable not set?"), repair(at_, at_ + 1, {});
        else if (trimmed(token(), blanks).empty())
            say("the token is blank: is there a blank behind the backslash at a line's end?"),
                repair(at_, at_ + 1, {});
        else if (own_option())
            return;
        else if (before && before->size() == 2 && is_meant_as_flag((*before)[1].text))
            swallowed(*before, at_ - 1);
        else if (!goes_on() && !misspelt() && !attached_value() && !before_its_flag() && !similar() &&
                 !(before && split_by_the_shell(at_ - 1)))
            stray();
    }

    static bool is_meant_as_flag(const std::u16string& text) {
        return kind_of(text) != FlagKind::no_flag || resembles_a_flag(text);
    }

    /// A flag that is known, but not here.
    void limited(const Occurrence& before) {
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
        const OwnOption* const option = token().starts_with(u"--") ? option_of(text.substr(2)) : nullptr;
        if (option == nullptr || !takes(*verb_of("check"), *option)) return false;
        say(text +
            (takes(*verb_of("show"), *option) ? " is an option of orvane-config"
                                              : " is an option of 'orvane-config check'") +
            ": it goes before the server's flags");
        repair(at_, end_of_strays(at_ + 1), {});
        return true;
    }

    /// A plain word that may be a flag's name, but goes on with the value before it.
    bool goes_on() {
        if (at_ == 0 || is_flag_like(token())) return false;
        const Occurrence& before = line_[at_ - 1];
        if (before.size() != 2) return false;
        return !reference_of(before[0].text)->names_path() && split_by_the_shell(at_ - 1);
    }

    bool misspelt() {
        const std::u16string_view whole = token();
        const std::u16string_view separators = is_flag_like(whole) ? u"= \t\u00A0:" : u"= ";
        const std::u16string_view name = whole.substr(0, whole.find_first_of(separators, 1));
        if (const Reference* const meant = flag_of(normalized(whole))) {
            say(misspelling(whole, std::string(meant->flag)));
            advice_.suggestions.emplace_back(meant->flag);
            repair(at_, at_ + 1, {{std::u16string(meant->wide), number()}});
            return true;
        }
        const Reference* const meant = flag_of(normalized(name));
        if (meant == nullptr) return false;
        if (std::u16string(meant->wide) != name) say(misspelling(name, std::string(meant->flag)));
        advice_.suggestions.emplace_back(meant->flag);
        value_behind(*meant, whole[name.size()], whole.substr(name.size() + 1));
        return true;
    }

    /// A flag that is known, and behind it in the same token a separator and the rest.
    void value_behind(const Reference& meant, char16_t separator, std::u16string_view rest) {
        std::vector<Token> words = {{std::u16string(meant.wide), number()}};
        const bool blank = is_one_of(separator, blanks);
        const std::u16string value = trimmed(blank ? trimmed(rest, u" =\t\u00A0\"'") : rest, blanks);
        if (blank && holds_a_flag(value)) {
            for (std::size_t begin = 0; begin < value.size();) {
                const std::size_t end = std::min(value.find(u' ', begin), value.size());
                if (end != begin) words.push_back({value.substr(begin, end - begin), number()});
                begin = end + 1;
            }
            say("it holds several words, each of which is a token of its own: " + shown(Occurrence(words)));
        } else if (meant.value.empty()) {
            const bool off = means_off(value);
            say(std::string(meant.flag) + " takes no value" +
                (off ? "; to switch it off, leave it out" : ""));
            if (off) words.clear();
        } else if (value.empty() && end_of_strays(at_ + 1) != at_ + 1) {
            words.push_back(line_[at_ + 1][0]);
            say("flag and value are apart by a blank only: " + shown(Occurrence(words)));
            return repair(at_, at_ + 2, words);
        } else if (value.empty()) {
            say("its value is missing: " + std::string(meant.flag) + " " + std::string(meant.value));
            words = placeholder(words);
        } else {
            words.push_back({value, number()});
            const std::string how = blank ? ", not quoted as one with its flag: " : ": ";
            say("the value is a token of its own" + how + shown(Occurrence(words)));
        }
        repair(at_, at_ + 1, words);
    }

    static bool holds_a_flag(std::u16string_view text) {
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find(u' ', begin), text.size());
            if (is_meant_as_flag(std::u16string(text.substr(begin, end - begin)))) return true;
            begin = end + 1;
        }
        return false;
    }

    /// A flag with its value directly behind it.
    bool attached_value() {
        const std::u16string_view whole = token();
        const Reference* longest = nullptr;
        for (const Reference& one : references()) {
            const std::size_t size = one.flag.size();
            if (one.value.empty() || whole.size() <= size || !whole.starts_with(one.wide)) continue;
            if (!is_one_of(whole[size], u"0123456789/.,;\"'")) continue;
            if (longest == nullptr || longest->flag.size() < size) longest = &one;
        }
        if (longest == nullptr) return false;
        const std::u16string value = trimmed(whole.substr(longest->flag.size()), u",;\"'");
        const Occurrence meant = {{std::u16string(longest->wide), number()}, {value, number()}};
        if (!ask(CommandLine{meant}).consumed()) return false;
        say("flag and value are apart by a blank: " + shown(meant));
        advice_.suggestions.emplace_back(longest->flag);
        repair(at_, at_ + 1, meant);
        return true;
    }

    /// Of the suggested flags, the first that takes the value that follows.
    const Reference& likeliest() const {
        const bool value = at_ + 1 != line_.size() && end_of_strays(at_ + 1) != at_ + 1;
        for (const std::string& flag : advice_.suggestions)
            if (value && ask(CommandLine{{{utf8_to_ustring(flag)}, line_[at_ + 1][0]}}).consumed())
                return *reference_of(flag);
        return *reference_of(advice_.suggestions[0]);
    }

    bool similar() {
        const std::u16string_view whole = token();
        const std::size_t separator = std::min(whole.find_first_of(u"= \t\u00A0", 1), whole.size());
        if (!is_flag_like(whole)) return false;
        const std::u16string words = normalized(whole.substr(0, separator));
        advice_.suggestions = similar_flags(words);
        if (advice_.suggestions.empty()) advice_.suggestions = flags_with(words);
        if (advice_.suggestions.empty()) return false;
        std::string sentence = "did you mean ";
        for (const std::string& flag : advice_.suggestions)
            sentence += (&flag == &advice_.suggestions[0] ? "" : " or ") + flag;
        say(sentence + "?");
        const Reference& meant = likeliest();
        if (separator != whole.size())
            value_behind(meant, whole[separator], whole.substr(separator + 1));
        else
            repair(at_, at_ + 1, {{std::u16string(meant.wide), number()}});
        return true;
    }

    /// The flag before has taken the next flag for its value.
    void swallowed(const Occurrence& flag, std::size_t position) {
        say(shown(flag[0].text) + " has taken " + shown(flag[1].text) +
            " for its value: is its own value missing?");
        std::vector<Token> words = placeholder({flag[0]});
        words.push_back(flag[1]);
        repair(position, position + 1, words);
    }

    bool before_its_flag() {
        if (begins_as_flag(token()) || at_ + 1 == line_.size()) return false;
        const Occurrence& next = line_[at_ + 1];
        if (kind_of(next[0].text) != FlagKind::value_flag) return false;
        if (next.size() == 2 && kind_of(next[1].text) == FlagKind::no_flag) return false;
        if (!ask(CommandLine{{next[0], occurrence()[0]}}).consumed()) return false;
        say("a value stands behind its flag: " + shown(Occurrence{next[0], occurrence()[0]}));
        std::vector<Token> words = {next[0], occurrence()[0]};
        words.insert(words.end(), next.begin() + 1, next.end());
        repair(at_, at_ + 2, words);
        return true;
    }

    /// Whether the value of the occurrence at `position` goes on in the tokens behind it.
    bool split_by_the_shell(std::size_t position) {
        const Occurrence& start = line_[position];
        if (start.size() != 2 || start[1].text.empty() || start[1].invented ||
            is_meant_as_flag(start[1].text))
            return false;
        // Commands go on with options, directories do not.
        const Reference& reference = *reference_of(start[0].text);
        std::size_t end = end_of_strays(position + 1, !reference.names_path());
        if (reference.names_path()) {
            if (is_one_of(start[1].text.back(), u"=\\\"'")) return false;
            const auto first = line_.begin() + static_cast<std::ptrdiff_t>(position + 1);
            const auto last = line_.begin() + static_cast<std::ptrdiff_t>(end);
            end =
                static_cast<std::size_t>(std::find_if_not(first, last,
                                                          [](const Occurrence& occurrence) {
                                                              return may_belong_to_a_path(occurrence[0].text);
                                                          }) -
                                         line_.begin());
        }
        if (end == position + 1) return false;
        if (reference.value.ends_with("<port>")) return separated(position, end);

        for (const bool quoting : {false, true}) {
            Occurrence joined = start;
            for (std::size_t i = position + 1; i != end; ++i) {
                const std::u16string& text = line_[i][0].text;
                const bool quoted = quoting && text.find(u' ') != text.npos;
                joined[1].text += quoted ? u" \"" + text + u"\"" : u" " + text;
            }
            if (!ask(CommandLine{joined}).consumed()) continue;
            say("was a value with a blank split by the shell? Quote it: " + shown(joined));
            repair(position, end, joined);
            return true;
        }
        return false;
    }

    /// Whether the tokens are the parts of an address.
    bool separated(std::size_t position, std::size_t end) {
        Occurrence joined = line_[position];
        if (all_digits(joined[1].text)) return false;
        for (std::size_t i = position + 1; i != end; ++i) {
            const std::u16string& text = line_[i][0].text;
            const bool joins = is_one_of(joined[1].text.back(), u"@:") || is_one_of(text[0], u"@:");
            joined[1].text += (joins ? u"" : u":") + text;
        }
        if (!ask(CommandLine{joined}).consumed()) return false;
        say("an address is one token: " + shown(joined));
        repair(position, end, joined);
        return true;
    }

    /// Whether each token could be a value of the flag before, which may be repeated.
    bool repeated() {
        const Occurrence& before = line_[at_ - 1];
        const std::size_t end = end_of_strays(at_ + 1);
        if (before.size() != 2 || !reference_of(before[0].text)->adds()) return false;
        std::vector<Token> words;
        for (std::size_t i = at_; i != end; ++i) {
            words.push_back({before[0].text, line_[i][0].number});
            words.push_back(line_[i][0]);
            if (!ask(CommandLine{words}).consumed()) return false;
        }
        say("the flag is given again for each value: " + shown(Occurrence(words.begin(), words.begin() + 2)));
        repair(at_, end, words);
        return true;
    }

    void stray() {
        std::size_t begin = at_;
        if (begins_as_flag(token())) {
            say("no flag is like it; 'orvane-config flags' lists them all");
        } else if (at_ == 0) {
            say("it is no flag");
        } else if (kind_of(line_[at_ - 1][0].text) == FlagKind::switch_flag) {
            const bool off = means_off(token());
            say(shown(line_[at_ - 1][0].text) + " takes no value" +
                (off ? "; to switch it off, leave it out" : ""));
            if (off) --begin;
        } else if (repeated()) {
            return;
        } else {
            say("it is no flag, and the flag before it has its value");
        }
        repair(begin, end_of_strays(at_ + 1), {});
    }

    void refused_value() {
        const Reference& reference = *reference_of(token());
        if (occurrence().size() == 1) {
            say("the line ends here, but " + shown(token()) +
                " needs a value: " + std::string(reference.value));
            return repair(at_, at_ + 1, placeholder(occurrence()));
        }
        const Token& value = occurrence()[1];
        if (is_meant_as_flag(value.text)) return swallowed(occurrence(), at_);
        if (quoted(value) || one_of_the_words(reference, value) || split_by_the_shell(at_) || swapped())
            return;
        if (ask(CommandLine{occurrence()}).consumed()) // what came before is in its way
            say(std::string(reference.flag) + ": " + reference.relations());
        else if (fault_.code == error_code::out_of_range())
            say(std::string(reference.flag) + ": " + reference.meaning());
        else if (is_too_large(reference, value.text))
            say(std::string(reference.flag) + ": the number is too large");
        else
            say("the form is " + std::string(reference.flag) + " " + std::string(reference.value) +
                ", for example: " + reference.example());
        // What follows is part of the value, if anything.
        const bool command = reference.value.find("<command>") != reference.value.npos;
        repair(at_, end_of_strays(at_ + 1, command), placeholder(occurrence()));
    }

    static bool is_too_large(const Reference& reference, const std::u16string& value) {
        return (reference.value == "<number>" || reference.value.ends_with("<port>")) &&
               all_digits(std::u16string_view(value).substr(value.find_last_of(u':') + 1));
    }

    bool replaced(const Token& value, const std::string& sentence, const char* end = "") {
        const Occurrence better = {occurrence()[0], value};
        if (value.text == occurrence()[1].text || !ask(CommandLine{better}).consumed()) return false;
        say(sentence + shown(better) + end);
        repair(at_, at_ + 1, better);
        return true;
    }

    bool quoted(const Token& value) {
        for (const auto& [set, what] : {std::pair(blanks, "blanks"), std::pair(quotes, "quotes")})
            if (replaced({trimmed(value.text, set), value.number},
                         std::string("there are ") + what + " in the value itself; without them: "))
                return true;
        return false;
    }

    bool one_of_the_words(const Reference& reference, const Token& value) {
        const std::vector<std::string> like = most_like(normalized(value.text), keywords(reference));
        return !like.empty() && replaced({utf8_to_ustring(like[0]), value.number}, "did you mean ", "?");
    }

    /// Another flag nearby has this one's value, and this one that flag's.
    bool swapped() {
        constexpr std::size_t near = 10;
        if (fault_.code == error_code::out_of_range() || ask(CommandLine{occurrence()}).consumed())
            return false;
        // Of two numbers neither is the other's: both are just wrong.
        const auto is_number = [](const Occurrence& one) {
            return one[1].text.find_first_of(u"0123456789") != one[1].text.npos;
        };
        const std::size_t last = std::min(at_ + near, line_.size() - 1);
        for (std::size_t other = at_ - std::min(at_, near); other <= last; ++other) {
            if (other == at_ || line_[other].size() != 2 || ask(CommandLine{line_[other]}).consumed())
                continue;
            Occurrence one = occurrence(), two = line_[other];
            if (is_number(one) && is_number(two)) continue;
            std::swap(one[1], two[1]);
            if (!ask(CommandLine{one}).consumed() || !ask(CommandLine{two}).consumed()) continue;
            say("are two values exchanged? " + shown(one) + " " + shown(two));
            const std::size_t begin = std::min(at_, other);
            const std::size_t end = std::max(at_, other);
            std::vector<Token> words = begin == at_ ? one : two;
            for (std::size_t i = begin + 1; i != end; ++i)
                words.insert(words.end(), line_[i].begin(), line_[i].end());
            const Occurrence& behind = begin == at_ ? two : one;
            words.insert(words.end(), behind.begin(), behind.end());
            repair(begin, end + 1, words);
            return true;
        }
        return false;
    }

    const Fault& fault_;
    const CommandLine& line_;
    std::size_t at_;
    Advice advice_{};
};

} // namespace

Advice advise(const Fault& fault, const CommandLine& line, std::size_t position) {
    return Adviser(fault, line, position).advise();
}

} // namespace orvane
