// Rules about tokens that come from a shell, a document or a file, and were never meant for the server.
#include "explaining/flag_like.hpp"
#include "explaining/meant_flags.hpp"
#include "explaining/rules.hpp"
#include "own/option_table.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// The first token from `from` on that is a flag, or was meant as one.
std::size_t next_flag(const WorkingLine& line, std::size_t from) {
    while (from != line.size() && !is_meant_as_flag(line[from][0].text))
        ++from;
    return from;
}

bool is_verb(const std::string& word) {
    return verb_of(word) != nullptr || (!meant_by(word).empty() && !word.starts_with('-'));
}

bool is_program(std::u16string_view token) {
    constexpr std::u16string_view runners[] = {u"sudo", u"doas", u"env", u"exec", u"nohup",
                                               u"nice", u"time", u"$",   u"%",    u"#",
                                               u">",    u"PS>",  u"&",   u"run",  u"start"};
    if (contains(runners, token)) return true;
    if (begins_as_flag(token)) return false;
    const auto equals = token.find(u'=');
    if (equals != token.npos && equals != 0)
        return std::all_of(
            token.begin(), token.begin() + static_cast<std::ptrdiff_t>(equals),
            [](char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_'; });
    return token.find_first_of(u"/\\") != token.npos || token.ends_with(u".exe") ||
           token.starts_with(u"orvane") || is_verb(qel::i18n::ustring_to_utf8(std::u16string(token)));
}

} // namespace

std::optional<Advice> empty_token(const FaultInLine& fault) {
    if (fault.token().empty())
        return remove(fault, fault.at, fault.at + 1, "the token is empty: was a variable not set?");
    if (trimmed(visible(fault.token().substr(0, 1000)), u" ").empty())
        return remove(fault, fault.at, fault.at + 1,
                      "the token is blank: does a space follow the backslash at the end of a line?");
    return std::nullopt;
}

std::optional<Advice> own_option(const FaultInLine& fault) {
    const std::string text = qel::i18n::ustring_to_utf8(fault.token());
    const bool is_own = text.starts_with("--") && option_of(std::string_view(text).substr(2)) != nullptr;
    const std::string_view meant = is_own ? "" : meant_by(text), typed = meant.empty() ? text : meant;
    const OwnOption* const option =
        typed.starts_with("--") ? own_option_called(typed.substr(2, typed.find(' ') - 2)) : nullptr;
    if (option == nullptr) return std::nullopt;
    const auto with_it = verbs_with(option->name);
    if (std::none_of(with_it.begin(), with_it.end(), [](auto name) { return takes_flags(*verb_of(name)); }))
        return std::nullopt;
    constexpr std::size_t few = 3;
    const std::string where =
        with_it.size() > few ? "" : " " + joined(with_it, ", ", std::identity(), " and ");
    Advice advice = remove(fault, fault.at, end_of_strays(fault.line, fault.at + 1),
                           std::string(typed) + " is an option of orvane-config" + where +
                               ": it goes before the server's flags");
    const auto synonym = synonym_of(option->name);
    if (synonym && synonym->reference != nullptr) {
        advice.edit.proposed = false;
        advice.sentences.push_back(
            "if it was meant for the server: " + std::string(synonym->reference->flag) +
            (synonym->value.empty() ? "" : " " + synonym->value));
    }
    return advice;
}

std::optional<Advice> program_before_flags(const FaultInLine& fault) {
    if (fault.at != 0 || flag_spelled(fault.token()) != nullptr) return std::nullopt;
    const std::size_t end = next_flag(fault.line, 0);
    // It may be a flag itself, NAME=value without hyphens, or a directory before its flag.
    if (end == 0 || end == fault.line.size() || (end == 1 && before_its_flag(fault))) return std::nullopt;
    // As in a list of processes, a table of jobs or a log: several words, the last of which is the program.
    const bool is_pasted = end > 2 && is_program(fault.line[end - 1][0].text);
    if (!is_program(fault.token()) && !is_pasted) return std::nullopt;
    return remove(fault, 0, end,
                  shown(fault.token()) +
                      " is not a flag: leave the program out and give only the server's flags");
}

std::optional<Advice> lone_mark(const FaultInLine& fault) {
    constexpr std::u16string_view marks[] = {u"-", u"--", u"=", u":",      u",",      u";",
                                             u"[", u"]",  u"{", u"}",      u"\\",     u"^",
                                             u"`", u"*",  u"+", u"\u2013", u"\u2014", u"\u2022"};
    if (!contains(marks, fault.token())) return std::nullopt;
    const bool continues = is_one_of(fault.token()[0], u"\\^`");
    return remove(fault, fault.at, fault.at + 1,
                  shown(fault.token()) +
                      (continues ? " from the end of a line was passed to the server: leave it out"
                                 : " means nothing to the server: leave it out"));
}

bool is_for_a_shell(std::u16string_view token) {
    constexpr std::u16string_view operators[] = {u"&", u"&&", u"|", u"||", u";",
                                                 u">", u">>", u"<", u"2>", u"&>"};
    return contains(operators, token) || token.starts_with(u"2>") || token.starts_with(u"&>");
}

std::optional<Advice> shell_syntax(const FaultInLine& fault) {
    if (!is_for_a_shell(fault.token())) return std::nullopt;
    return remove(fault, fault.at, end_of_strays(fault.line, fault.at + 1, true),
                  shown(fault.token()) +
                      " is meant for a shell, not for the server: leave it out, and what belongs to it");
}

std::optional<Advice> comment(const FaultInLine& fault) {
    if (fault.token()[0] != u'#' || flag_spelled(fault.token()) != nullptr) return std::nullopt;
    return remove(fault, fault.at, end_of_strays(fault.line, fault.at + 1, true),
                  "the server does not understand comments: leave them out");
}

} // namespace orvane
