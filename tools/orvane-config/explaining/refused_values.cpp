// Rules about values that their flag does not take.
#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/rules.hpp"
#include "probing/occurrence_text.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/config/error_code.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <map>

namespace orvane {
namespace {

const Token& value_of(const FaultInLine& fault) {
    return fault.occurrence()[1];
}

const Reference& flag_of(const FaultInLine& fault) {
    return reference_of(fault.occurrence());
}

/// Proposes another value, if the library takes it.
std::optional<Advice> better(const FaultInLine& fault, const std::u16string& text,
                             const std::string& sentence, const char* ending = "") {
    if (text == value_of(fault).text || !takes(fault.occurrence()[0], text)) return std::nullopt;
    return replace(fault, fault.at, fault.at + 1, {fault.occurrence()[0], {text, value_of(fault).number}},
                   sentence, ending);
}

/// "${PORT:-80" of "${PORT:-80}".
bool cuts_variable(std::u16string_view text) {
    const std::size_t at = text.rfind(u"${");
    return at != text.npos && text.find(u'}', at) == text.npos;
}

/// The token that follows, if it may be the value.
const Token* next_stray(const FaultInLine& fault) {
    return has_strays(fault.line, fault.at + 1) ? &(*fault.after())[0] : nullptr;
}

/// With an example as the value, because the real one cannot be guessed.
Advice by_example(const FaultInLine& fault, std::string sentence) {
    // What follows may belong to the value.
    const bool command = flag_of(fault).holds(Holds::command);
    Advice advice{{std::move(sentence)}, {}, {}};
    advice.edit = edit_of(fault, fault.at, end_of_strays(fault.line, fault.at + 1, command),
                          with_placeholder(fault.occurrence()));
    if (advice.edit.occurrences.empty()) advice.edit.proposed = false;
    return advice;
}

/// Those of another kind that have all words of the flag's name, and others.
const std::vector<const Reference*>& other_quantities(const Reference& flag) {
    static std::map<const Reference*, std::vector<const Reference*>>
        known; // the same flag may be refused often
    const auto [place, is_new] = known.try_emplace(&flag);
    if (!is_new) return place->second;
    const std::vector<std::u16string> words = split_words(normalized(flag.wide));
    for (const Reference& one : references()) {
        const auto others = split_words(normalized(one.wide));
        const bool more =
            others.size() > words.size() &&
            std::all_of(words.begin(), words.end(), [&](const auto& word) { return contains(others, word); });
        if (more && one.holds(Holds::quantity) && one.form != flag.form) place->second.push_back(&one);
    }
    return place->second;
}

/// The largest number that the flag takes, if the value is larger.
std::string too_large(const Reference& reference, std::u16string_view value) {
    const std::string_view largest = row_of(reference.form).largest;
    if (largest.empty()) return {};
    std::u16string_view digits = value.substr(value.find_last_of(u":@") + 1);
    digits.remove_prefix(std::min(digits.find_first_not_of(u'0'), digits.size()));
    const std::u16string most = qel::i18n::utf8_to_ustring(largest);
    if (!all_digits(digits) || digits.size() < most.size() ||
        (digits.size() == most.size() && digits <= most))
        return {};
    return std::string(reference.holds(Holds::port) ? "the largest port is " : "the largest is ")
        .append(largest);
}

} // namespace

std::optional<Advice> missing_value(const FaultInLine& fault) {
    if (fault.occurrence().size() != 1) return std::nullopt;
    Advice advice{{"the line ends here, but " + shown(fault.token()) +
                   " needs a value: " + std::string(flag_of(fault).value)},
                  {},
                  {}};
    advice.edit = edit_of(fault, fault.at, fault.at + 1, with_placeholder(fault.occurrence()));
    return advice;
}

std::optional<Advice> swallowing_flag(const FaultInLine& fault) {
    if (!is_meant_as_flag(value_of(fault).text)) return std::nullopt;
    const Token& flag = fault.occurrence()[0];
    const Token* const next = next_stray(fault);
    if (flag_spelled(value_of(fault).text) == &flag_of(fault) && next != nullptr && takes(flag, next->text))
        return replace(fault, fault.at, fault.at + 2, {flag, *next}, "the flag is given twice: ");
    std::vector<Token> tokens = with_placeholder({flag});
    tokens.push_back(value_of(fault));
    Advice advice{{shown(flag.text) + " has taken " + shown(value_of(fault).text) +
                   " as its value: is the real value missing?"},
                  {},
                  {}};
    advice.edit = edit_of(fault, fault.at, fault.at + 1, tokens);
    return advice;
}

std::optional<Advice> marked_value(const FaultInLine& fault) {
    const Token* const next = next_stray(fault);
    if (!is_mark(value_of(fault).text) || next == nullptr) return std::nullopt;
    for (const std::u16string& text : {next->text, bare(next->text)})
        if (takes(fault.occurrence()[0], text))
            return replace(fault, fault.at, fault.at + 2, {fault.occurrence()[0], {text, next->number}},
                           shown(value_of(fault).text) + " was taken as the value; leave it out: ");
    return std::nullopt;
}

std::optional<Advice> dirty_value(const FaultInLine& fault) {
    const std::u16string& value = value_of(fault).text;
    const std::u16string clean = bare(value.substr(0, 10000));
    const bool quoted = value.find_first_of(quotes) != value.npos;
    const bool blank = clean != value && trimmed(value, blanks) == clean;
    const std::string what = quoted  ? "quotes"
                             : blank ? "spaces or invisible characters"
                                     : "characters that do not belong there";
    for (const std::u16string& text :
         {clean, folded(clean), trimmed(clean, u":"), bare(trimmed(clean, u"[]<>(){}:,;")),
          clean.substr(clean.starts_with(u"- ") ? 2 : 0)})
        if (!cuts_variable(text))
            if (auto advice = better(fault, text, "the value itself contains " + what + "; without them: "))
                return advice;
    // "http=9910" after its own flag.
    const auto separator = clean.find_first_of(u"=: ");
    if (separator == clean.npos || flag_spelled(clean.substr(0, separator)) != &flag_of(fault))
        return std::nullopt;
    return better(fault, bare(clean.substr(separator + 1)), "leave the flag's name out of the value: ");
}

std::optional<Advice> similar_word(const FaultInLine& fault) {
    const auto words = keywords(flag_of(fault));
    if (words.empty()) return std::nullopt;
    const auto like = most_like(normalized(value_of(fault).text), words);
    return like.empty() ? std::nullopt
                        : better(fault, qel::i18n::utf8_to_ustring(like[0]), "did you mean ", "?");
}

std::optional<Advice> split_value(const FaultInLine& fault) {
    return joined_value(fault, fault.at);
}

std::optional<Advice> read_otherwise(const FaultInLine& fault) {
    const Token& flag = fault.occurrence()[0];
    const Token* const next = next_stray(fault);
    for (const bool with_next : {false, true}) {
        if (with_next && next == nullptr) break;
        if (!with_next && has_unit_after(fault.line, fault.at)) continue;
        const std::u16string value = value_of(fault).text + (with_next ? u" " + next->text : u"");
        if (value.size() > 1000) break;
        for (const Reading& reading : readings(flag_of(fault), value))
            if (takes(flag, reading.value)) {
                const std::size_t end = fault.at + (with_next ? 2 : 1), number = value_of(fault).number;
                const Token token = token_of(reading, number), example{reading.value, number};
                Advice advice =
                    replace(fault, fault.at, end, {flag, token.asks_for_a_part() ? token : example},
                            reading.why + ": ");
                advice.edit = edit_of(fault, fault.at, end, {flag, token});
                return advice;
            }
    }
    return std::nullopt;
}

std::optional<Advice> swapped(const FaultInLine& fault) {
    constexpr std::size_t near = 10;
    if (fault.fault.code == qel::config::error_code::out_of_range() || takes(fault.occurrence()))
        return std::nullopt;
    // Two numbers were not swapped: both are simply wrong.
    const auto is_number = [](const Occurrence& one) {
        return one[1].text.find_first_of(u"0123456789") != one[1].text.npos;
    };
    const std::size_t last = std::min(fault.at + near, fault.line.size() - 1);
    for (std::size_t other = fault.at + 1; other <= last; ++other) {
        Occurrence one = fault.occurrence(), two = fault.line[other];
        if (two.size() != 2 || (is_number(one) && is_number(two)) || takes(two)) continue;
        std::swap(one[1], two[1]);
        if (!takes(one) || !takes(two)) continue;
        Advice advice{{"are these two values swapped? " + shown(one) + " " + shown(two)}, {}, {}};
        Edit& edit = advice.edit;
        edit.begin = fault.at;
        edit.end = other + 1;
        edit.occurrences = fault.line.part(fault.at, other + 1);
        edit.occurrences.front() = one;
        edit.occurrences.back() = two;
        return advice;
    }
    return std::nullopt;
}

std::optional<Advice> similar_flag(const FaultInLine& fault) {
    if (!flag_of(fault).holds(Holds::quantity)) return std::nullopt;
    const Reference* found = nullptr;
    for (const Reference* const one : other_quantities(flag_of(fault))) {
        if (!takes({std::u16string(one->wide)}, value_of(fault).text)) continue;
        if (found != nullptr) return std::nullopt;
        found = one;
    }
    if (found == nullptr) return std::nullopt;
    Advice advice =
        replace(fault, fault.at, fault.at + 1,
                {{std::u16string(found->wide), fault.number()}, value_of(fault)}, "did you mean ", "?");
    advice.suggestions = {std::u16string(found->wide)};
    return advice;
}

std::optional<Advice> in_the_way(const FaultInLine& fault) {
    if (!takes(fault.occurrence())) return std::nullopt;
    Advice advice = by_example(fault, std::string(flag_of(fault).flag) + ": " + flag_of(fault).relations());
    advice.edit.proposed = false;
    return advice;
}

std::optional<Advice> out_of_range(const FaultInLine& fault) {
    if (fault.fault.code != qel::config::error_code::out_of_range()) return std::nullopt;
    return by_example(fault, std::string(flag_of(fault).flag) + ": " + flag_of(fault).meaning());
}

std::optional<Advice> wrong_form(const FaultInLine& fault) {
    const Reference& reference = flag_of(fault);
    const std::string flag(reference.flag), form = flag + " " + std::string(reference.value);
    const std::u16string& value = value_of(fault).text;
    if (reference.form == Form::port && value.find_last_of(u":@") != value.npos &&
        value.find_first_of(u":@") != 0)
        return by_example(fault, flag + ": write the number of the port alone, without a host");
    if (const std::string most = too_large(reference, value); !most.empty())
        return by_example(fault, flag + ": the number is too large; " + most);
    if (const std::string reason = reference.holds(Holds::port) ? why_no_port(value) : ""; !reason.empty())
        return by_example(fault, flag + ": " + reason);
    const std::string why = value.empty() ? "the value is empty: was a variable not set? T" : "t";
    return by_example(fault, why + "he form is " + form + ", for example: " + reference.example());
}

} // namespace orvane
