// The format env, read: a file of variables, one of which holds the flags.
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <cctype>

namespace orvane {
namespace {

bool has_flags(std::string_view value) {
    for (std::size_t at = 0; (at = value.find("--", at)) != value.npos; ++at)
        if (at == 0 || std::string_view(" \t\n\"'(").find(value[at - 1]) != std::string_view::npos)
            return true;
    return false;
}

/// None, unless all lines are variables and comments.
std::vector<Assignment> assignments(const LocatedText& text) {
    std::vector<Assignment> all;
    for (Walk walk(text); skip_to_assignment(walk); walk.skip_to("\n"))
        if (Assignment& one = all.emplace_back();
            !skip_assignment(walk, one, true) || !is_variable_name(one.name))
            return {};
    return all;
}

std::string_view value_in(std::string_view text, const Assignment& one) {
    return text.substr(one.value, one.end - one.value);
}

/// A name as variables have, or flags; but not A=b in front of a command.
bool is_of_environment(std::string_view text, const Assignment& one) {
    const std::string_view value = value_in(text, one);
    if (value.starts_with("--")) return true;
    const auto is_lower = [](char c) { return std::islower(static_cast<unsigned char>(c)) != 0; };
    return std::ranges::none_of(one.name, is_lower) && (one.quote != 0 || !has_flags(value));
}

ReadTokens words_of(const LocatedText& value) {
    ReadTokens tokens;
    for (Walk walk(value); !walk.done();) {
        if (walk.skip_any_of(" \t\r\n"); walk.done()) break;
        ReadToken token{{}, walk.spot()};
        while (!walk.done() && std::string_view(" \t\r\n").find(walk.peek()) == std::string_view::npos) {
            if (walk.peek() == '"' || walk.peek() == '\'')
                walk.refuse("systemd and a shell read a quote in a value differently; check the file that "
                            "uses the variable, and give this one with --env");
            token.text += walk.next();
        }
        tokens.push_back(std::move(token));
    }
    return tokens;
}

} // namespace

bool is_env(std::string_view text) {
    const auto equals = first_line_of(text).find('='); // before the whole text is looked at
    if (equals == text.npos) return false;
    const std::vector<Assignment> all = assignments(located(text));
    return std::ranges::any_of(all, [&](const Assignment& one) { return is_of_environment(text, one); });
}

ReadTokens read_env(const LocatedText& text) {
    std::vector<Assignment> all = assignments(text);
    std::erase_if(all, [&](const Assignment& one) { return !has_flags(value_in(text.bytes, one)); });
    const std::string advice = "; check the file that uses them, and give this one with --env";
    if (all.empty())
        throw NotUnderstood({1, 1}, "these are variables of an environment, and none holds flags" + advice);
    if (all.size() > 1)
        throw NotUnderstood(text.spots[all[1].begin], "several variables hold flags" + advice,
                            "the variables " + joined(all, ", ", &Assignment::name, " and ") + " hold flags" +
                                advice);
    const std::size_t end = std::min(text.bytes.find('\n', all[0].end), text.bytes.size());
    return words_of(variables_of(part(text, all[0].begin, end)).front().value);
}

} // namespace orvane
