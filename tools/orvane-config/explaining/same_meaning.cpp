// Whether a proposal means what was typed.
#include "explaining/same_meaning.hpp"

#include "explaining/flag_like.hpp"
#include "explaining/rules.hpp"
#include "probing/occurrence_text.hpp"
#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace orvane {
namespace {

std::u16string_view last_word(const std::u16string& words, std::size_t end) {
    const std::size_t begin = words.rfind(u' ', end - 1) + 1;
    return std::u16string_view(words).substr(begin, end - begin);
}

/// The words that begin with a digit; "1.5GB" and "8,080" are one.
std::vector<std::u16string> numbers_in(std::u16string_view text) {
    const std::u16string seen = u" " + folded(text) + u" ";
    const auto is_digit = [&seen](std::size_t at) { return all_digits(seen.substr(at, 1)); };
    std::u16string words = seen;
    for (std::size_t i = 1; i + 1 != seen.size(); ++i)
        if (!is_alphanumeric(seen[i]) && !(seen[i] == u'%' && is_digit(i - 1)) &&
            !(is_one_of(seen[i], u"._,'") && is_digit(i - 1) && is_digit(i + 1) &&
              !is_ipv4(last_word(words, i))))
            words[i] = u' ';
    std::vector<std::u16string> numbers = split_words(words, u" ");
    std::erase_if(numbers, [](const std::u16string& word) { return !all_digits(word.substr(0, 1)); });
    return numbers;
}

/// Those that are not in the others, each of which stands for one.
std::vector<std::u16string> without(std::vector<std::u16string> numbers, std::vector<std::u16string> others) {
    std::erase_if(numbers, [&others](const std::u16string& number) {
        const auto found = std::find(others.begin(), others.end(), number);
        if (found == others.end()) return false;
        others.erase(found);
        return true;
    });
    return numbers;
}

/// What the library reads; nothing if it refuses the value.
std::optional<Amount> recorded(Form form, const std::u16string& value) {
    const auto of = [&value](std::u16string_view flag) {
        return ask(CommandLine{occurrence_of(std::u16string(flag), value)}).settings;
    };
    if (form == Form::size)
        if (const auto size = of(flag::log_rotation_size).log_rotation_size()) return *size;
    if (form == Form::number)
        if (const auto number = of(flag::num_workers).num_workers()) return *number;
    if (form == Form::duration)
        if (const auto time = of(flag::request_timeout).request_timeout())
            return static_cast<Amount>(time->total_microseconds());
    return std::nullopt;
}

/// A proposed value, and what was typed for it.
struct Proposed {
    std::size_t place; ///< of its occurrence
    const Reference& flag;
    const std::u16string& value;
    std::u16string typed;
};

/// The tokens in the place of which a proposal is, by their numbers.
class Typed {
public:
    explicit Typed(const FaultInLine& fault, const Edit& edit) {
        for (const Token& token : tokens_in(fault.line.part(edit.begin, edit.end)))
            old_.emplace(token.number, token.text);
        for (const Token& token : tokens_in(edit.occurrences))
            taken_.insert(token.number);
    }

    bool has(const Token& token) const {
        const auto [begin, end] = old_.equal_range(token.number);
        return std::any_of(begin, end, [&](const auto& one) { return one.second == token.text; });
    }

    /// The tokens from the value's own to the next one with a place in the proposal; of one that had its flag too, the rest.
    std::u16string value_of(const Occurrence& one) {
        std::u16string typed;
        const auto end = taken_.upper_bound(one[1].number);
        for (auto at = old_.lower_bound(one[1].number); at != old_.end(); ++at) {
            if (end != taken_.end() && at->first >= *end) break;
            const bool both = at->first == one[0].number;
            typed += (typed.empty() ? u"" : u" ") + (both ? rest(*at, one) : at->second);
        }
        return typed;
    }

private:
    /// Several flags may have been in the token; then each value is a word of it.
    std::u16string rest(const std::pair<const std::size_t, std::u16string>& token, const Occurrence& one) {
        if (words_of_ != token.first) {
            const auto words = split_words(token.second, u" \\");
            words_ = {words.begin(), words.end()};
            words_of_ = token.first;
        }
        if (words_.contains(one[1].text)) return one[1].text;
        const NameAndValue parts = split_token(token.second);
        if (parts.separator != 0) return std::u16string(parts.rest);
        const std::size_t name = token.second.starts_with(one[0].text) ? one[0].text.size() : 0;
        return token.second.substr(
            std::min(token.second.find_first_of(u"0123456789", name), token.second.size()));
    }

    std::multimap<std::size_t, std::u16string> old_{};
    std::multiset<std::size_t> taken_{};
    std::size_t words_of_ = 0;
    std::set<std::u16string> words_{};
};

/// The values of the proposal that are not only examples, unless flag and value are as they were.
std::vector<Proposed> values_of(const FaultInLine& fault, const Edit& edit) {
    Typed typed(fault, edit);
    std::vector<Proposed> values;
    for (std::size_t i = 0; i != edit.occurrences.size(); ++i) {
        const Occurrence& one = edit.occurrences[i];
        if (!has_value(&one) || one[1].number == 0 || !one[1].sample.empty()) continue;
        if (!typed.has(one[0]) || !typed.has(one[1]))
            values.push_back({i, reference_of(one), one[1].text, typed.value_of(one)});
    }
    return values;
}

/// Also in "80\t--wait", where the tabulator was never one.
bool has_flag_inside(std::u16string_view value) {
    const std::size_t at = value.find(u"--");
    return at != value.npos &&
           (at == 0 || !is_alphanumeric(value[at - 1]) || (at > 1 && value[at - 2] == u'\\'));
}

/// A number alone is in the server's unit, or in that of another server's flag.
bool is_amount(Amount taken, const Proposed& one) {
    const std::u16string plain = bare(folded(one.typed));
    const bool unitless = one.flag.form == Form::duration && all_digits(plain);
    return taken == amount_of(unitless ? plain + u"s" : plain, one.flag.form) ||
           (unitless && one.value == plain);
}

bool is_kept(const Proposed& one) {
    if (one.flag.holds(Holds::quantity))
        if (const auto taken = recorded(one.flag.form, one.value)) return is_amount(*taken, one);
    return one.value == one.typed || !has_flag_inside(one.value);
}

/// What a value lacks of what was typed for it: a file in a directory, or numbers.
std::vector<std::u16string> left_out(const Proposed& one) {
    if (one.flag.holds(Holds::path) && one.typed.starts_with(one.value + u"/"))
        return {one.typed.substr(one.value.size() + 1)};
    if (one.flag.holds(Holds::quantity)) return {};
    return without(numbers_in(one.typed), numbers_in(one.value));
}

std::vector<std::u16string> left_out(const FaultInLine& fault, const Edit& edit) {
    std::set<std::size_t> numbers;
    std::u16string texts;
    bool has_placeholder = false;
    for (const Token& token : tokens_in(edit.occurrences)) {
        numbers.insert(token.number);
        texts += token.text + u' ';
        has_placeholder = has_placeholder || !token.sample.empty();
    }
    std::vector<std::u16string> lost;
    for (const Token& token : tokens_in(fault.line.part(edit.begin, edit.end)))
        if (!numbers.contains(token.number) && texts.find(token.text) == texts.npos)
            lost.push_back(token.text);
    if (!has_placeholder)
        for (const Proposed& one : values_of(fault, edit))
            std::ranges::move(left_out(one), std::back_inserter(lost));
    return lost;
}

} // namespace

bool means_the_same(const FaultInLine& fault, const Edit& edit) {
    const auto values = values_of(fault, edit);
    return !edit.proposed || std::all_of(values.begin(), values.end(), is_kept);
}

bool means_the_same(const Occurrence& typed, const Occurrence& fixed) {
    const Proposed one{0, reference_of(fixed), fixed[1].text, typed[1].text};
    return is_kept(one) && left_out(one).empty();
}

void ask_for_the_others(const FaultInLine& fault, Advice& advice) {
    for (const Proposed& one : values_of(fault, advice.edit)) {
        if (is_kept(one)) continue;
        Occurrence& unclear = advice.edit.occurrences[one.place];
        const Occurrence asking = with_placeholder(unclear);
        for (std::string& sentence : advice.sentences)
            if (const std::size_t at = sentence.find(shown(unclear)); at != sentence.npos)
                sentence.replace(at, shown(unclear).size(), shown(asking));
        unclear = asking;
    }
}

void name_what_is_left_out(const FaultInLine& fault, Advice& advice) {
    if (!advice.edit.proposed) return;
    std::vector<std::u16string> lost = left_out(fault, advice.edit);
    std::erase_if(lost, [&](const std::u16string& text) {
        const auto names = [name = shown(text)](const std::string& said) {
            return (" " + said + " ").find(" " + name + " ") != said.npos;
        };
        return text == fault.token() || std::any_of(advice.sentences.begin(), advice.sentences.end(), names);
    });
    if (!lost.empty())
        advice.sentences.push_back("this leaves out " +
                                   joined(lost, " ", [](const std::u16string& text) { return shown(text); }));
}

} // namespace orvane
