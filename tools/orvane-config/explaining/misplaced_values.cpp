// Rules about tokens that were meant as values, but are not where a value belongs.
#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/rules.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/config/error_code.hpp"

namespace orvane {
namespace {

/// The flags that the library knows after one that limits what follows.
const std::string& allowed_after_the_limit() {
    static const std::string allowed = [] {
        std::vector<std::string_view> known;
        for (const Reference& one : references()) {
            const Occurrence limit = occurrence_of(std::u16string(flag_with(Trait::limits_next).wide), u"1");
            if (ask({limit, {{std::u16string(one.wide)}}}).code !=
                qel::config::error_code::unrecognized_flag())
                known.push_back(one.flag);
        }
        return joined(known);
    }();
    return allowed;
}

/// Whether the token may be part of a path that contains spaces.
bool may_belong_to_a_path(std::u16string_view token) {
    constexpr std::u16string_view punctuation = u"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    return !token.empty() && !is_one_of(token[0], punctuation) && !is_one_of(token[0], blanks) &&
           !is_one_of(token[0], quotes) && token.find_first_of(u"<>|&;") == token.npos &&
           flag_spelled(token) == nullptr;
}

/// The parts of an address, put together. Nothing follows one that has its port.
std::optional<Advice> separated_address(const FaultInLine& fault, std::size_t position, std::size_t end) {
    Occurrence joined = fault.line[position];
    std::size_t next = position + 1;
    if (takes(joined)) return std::nullopt;
    while (next != end && !takes(joined)) {
        const std::u16string& text = fault.line[next++][0].text;
        const bool joins = is_one_of(joined[1].text.back(), u"@:") || is_one_of(text[0], u"@:");
        joined[1].text += (joins ? u"" : u":") + text;
    }
    if (!takes(joined)) return std::nullopt;
    return replace(fault, position, next, joined, "pass the address as one argument: ");
}

/// The end of the tokens that belong to a path: directories go on in the last one.
std::size_t end_of_path(const FaultInLine& fault, std::size_t from, std::size_t end) {
    std::size_t last = from;
    while (from != end && may_belong_to_a_path(fault.line[from][0].text))
        if (fault.line[from++][0].text.find_first_of(u"/\\") != std::u16string::npos) last = from;
    return last;
}

/// The end of the tokens that may belong to a value other than a path: a command's options, but no flags.
std::size_t end_of_words(const FaultInLine& fault, std::size_t from) {
    const std::size_t end = end_of_strays(fault.line, from, true);
    while (from != end && !folded(fault.line[from][0].text).starts_with(u"--"))
        ++from;
    return from;
}

} // namespace

bool is_mark(std::u16string_view value) {
    return value.size() < 3 && !value.empty() &&
           value.find_first_not_of(u"=:-\\^`#\u2013\u2014>") == value.npos;
}

std::optional<Advice> joined_value(const FaultInLine& fault, std::size_t position) {
    const Occurrence& start = fault.line[position];
    if (!has_value(&start) || start[1].text.empty() || !start[1].sample.empty() ||
        is_meant_as_flag(start[1].text))
        return std::nullopt;
    const Reference& reference = reference_of(start);
    const bool path = reference.holds(Holds::path);
    if (path && is_one_of(start[1].text.back(), u"=\\\"'")) return std::nullopt;
    const std::size_t end = path ? end_of_path(fault, position + 1, end_of_strays(fault.line, position + 1))
                                 : end_of_words(fault, position + 1);
    if (end == position + 1) return std::nullopt;
    if (reference.holds(Holds::port)) return separated_address(fault, position, end);

    for (const bool quoting : {false, true}) {
        Occurrence joined = start;
        for (std::size_t i = position + 1; i != end; ++i) {
            const std::u16string& text = fault.line[i][0].text;
            const bool quoted = quoting && text.find(u' ') != text.npos;
            joined[1].text += quoted ? u" \"" + text + u"\"" : u" " + text;
        }
        if (takes(joined))
            return replace(fault, position, end, joined,
                           "did the shell split a value that contains a space? Quote it: ");
    }
    return std::nullopt;
}

std::optional<Advice> limited(const FaultInLine& fault) {
    if (fault.at == 0 || kind_of(fault.token()) == FlagKind::no_flag) return std::nullopt;
    const Occurrence& limit = *fault.before();
    const std::string flag = shown(limit[0].text);
    if (fault.token() == limit[0].text)
        return remove(fault, fault.at - 1, fault.at, flag + " is given twice: leave one out");
    Advice advice{
        {"put " + flag + " last: right after it the server recognizes only " + allowed_after_the_limit()},
        {},
        {}};
    // If a later one counts anyway, this one can go.
    Edit& edit = advice.edit;
    edit.begin = fault.at - 1;
    edit.end = fault.at + 1;
    while (edit.end != fault.line.size() && fault.line[edit.end][0].text != limit[0].text)
        ++edit.end;
    edit.occurrences = fault.line.part(fault.at, edit.end);
    if (edit.end == fault.line.size()) edit.occurrences.push_back(limit);
    return advice;
}

std::optional<Advice> swallowed_flag(const FaultInLine& fault) {
    const Occurrence* const before = fault.before();
    if (!has_value(before) || !is_meant_as_flag((*before)[1].text)) return std::nullopt;
    const Token& flag = (*before)[0];
    if (flag_spelled((*before)[1].text) == flag_spelled(flag.text) && takes(flag, fault.token()))
        return replace(fault, fault.at - 1, fault.at + 1, {flag, fault.occurrence()[0]},
                       "the flag is given twice: ");
    std::vector<Token> tokens = with_placeholder({flag});
    tokens.push_back((*before)[1]);
    Advice advice{{shown(flag.text) + " has taken " + shown((*before)[1].text) +
                   " as its value: is the real value missing?"},
                  {},
                  {}};
    advice.edit = edit_of(fault, fault.at - 1, fault.at, tokens);
    return advice;
}

std::optional<Advice> mark_for_a_value(const FaultInLine& fault) {
    const Occurrence* const before = fault.before();
    if (!has_value(before) || !is_mark((*before)[1].text) || begins_as_flag(fault.token()))
        return std::nullopt;
    if (!takes((*before)[0], fault.token())) return std::nullopt;
    return replace(fault, fault.at - 1, fault.at + 1, {(*before)[0], fault.occurrence()[0]},
                   shown((*before)[1].text) + " was taken as the value; leave it out: ");
}

std::optional<Advice> given_twice(const FaultInLine& fault) {
    const Occurrence* const before = fault.before();
    if (!has_value(before) || (*before)[1].text != fault.token()) return std::nullopt;
    return remove(fault, fault.at, fault.at + 1, "the value is given twice: leave one out");
}

std::optional<Advice> goes_on(const FaultInLine& fault) {
    if (!has_value(fault.before()) || reference_of(*fault.before()).holds(Holds::path)) return std::nullopt;
    // A command's options are short, or resemble no flag.
    const bool command = reference_of(*fault.before()).holds(Holds::command);
    const bool option = command && fault.token()[0] == u'-' && !fault.token().starts_with(u"--");
    if (is_flag_like(fault.token()) && (!option || is_meant_as_flag(fault.token()))) return std::nullopt;
    return joined_value(fault, fault.at - 1);
}

std::optional<Advice> before_its_flag(const FaultInLine& fault) {
    const Occurrence* const next = fault.after();
    if (begins_as_flag(fault.token()) || next == nullptr || kind_of((*next)[0].text) != FlagKind::value_flag)
        return std::nullopt;
    if (next->size() == 2 && kind_of((*next)[1].text) == FlagKind::no_flag) return std::nullopt;
    const Occurrence meant = {(*next)[0], fault.occurrence()[0]};
    if (!takes(meant)) return std::nullopt;
    Advice advice = replace(fault, fault.at, fault.at + 2, meant, "the value goes after its flag: ");
    std::vector<Token> tokens = meant;
    tokens.insert(tokens.end(), next->begin() + 1, next->end());
    advice.edit = edit_of(fault, fault.at, fault.at + 2, tokens);
    return advice;
}

std::optional<Advice> split_by_the_shell(const FaultInLine& fault) {
    return fault.at == 0 ? std::nullopt : joined_value(fault, fault.at - 1);
}

std::optional<Advice> repeated(const FaultInLine& fault) {
    const Occurrence* const before = fault.before();
    if (!has_value(before) || reference_of(*before).repeats != Repeats::adds) return std::nullopt;
    const std::size_t end = end_of_strays(fault.line, fault.at + 1);
    std::vector<Token> tokens;
    for (std::size_t i = fault.at; i != end; ++i) {
        const Token& value = fault.line[i][0];
        if (!takes((*before)[0], value.text)) return std::nullopt;
        tokens.push_back({(*before)[0].text, value.number});
        tokens.push_back(value);
    }
    Advice advice = replace(fault, fault.at, end, {tokens.begin(), tokens.begin() + 2},
                            "repeat the flag for each value: ");
    advice.edit = edit_of(fault, fault.at, end, tokens);
    return advice;
}

std::optional<Advice> switch_value(const FaultInLine& fault) {
    if (fault.at == 0 || kind_of((*fault.before())[0].text) != FlagKind::switch_flag) return std::nullopt;
    const bool off = means_off(fault.token());
    return remove(
        fault, off ? fault.at - 1 : fault.at, end_of_strays(fault.line, fault.at + 1),
        shown((*fault.before())[0].text) + " takes no value" +
            (off ? "; to switch it off, leave it out" : ": leave " + shown(fault.token()) + " out"));
}

std::optional<Advice> surplus(const FaultInLine& fault) {
    std::string sentence = "unexpected argument: it is not a flag";
    if (const Occurrence* const before = fault.before())
        sentence = "unexpected argument: the flag before it already has its value" +
                   std::string(has_value(before) && reference_of(*before).holds(Holds::path)
                                   ? "; if it belongs to the path, quote them together"
                                   : "");
    return skip(fault, fault.at, end_of_strays(fault.line, fault.at + 1), std::move(sentence));
}

} // namespace orvane
