// Variables that are replaced in what is read.
#include "formats/source_files.hpp"

#include <algorithm>
#include <cctype>

namespace orvane {
namespace {

/// Stands for a value until the text is read, so that no format takes a part of it for its own. Programs give these characters
/// no meaning.
constexpr std::string_view stand_in = "\xF4\x8F\xBC";

bool is_in_name(char c, bool is_first) {
    const auto byte = static_cast<unsigned char>(c);
    return c == '_' || (is_first ? std::isalpha(byte) : std::isalnum(byte)) != 0;
}

/// What follows the name in ${}. False: this is something else.
bool skip_operator(Walk& walk, VariableUse& use) {
    use.also_if_empty = walk.skip(":");
    const bool is_default = walk.skip("-");
    if (!is_default && !walk.skip("?")) return !use.also_if_empty && walk.skip("}");
    std::string text;
    while (!walk.done() && walk.peek() != '}')
        text += walk.next();
    if (is_default) use.otherwise = text;
    return text.find('$') == text.npos && walk.skip("}");
}

} // namespace

VariableUse skip_variable(Walk& walk) {
    Walk ahead = walk;
    ahead.skip("$");
    const bool has_braces = ahead.skip("{");
    VariableUse use;
    while (!ahead.done() && is_in_name(ahead.peek(), use.name.empty()))
        use.name += ahead.next();
    if (use.name.empty() || (has_braces && !skip_operator(ahead, use))) return {};
    walk.move_to(ahead.at());
    return use;
}

bool is_variable_name(std::string_view text) {
    return !text.empty() && is_in_name(text[0], true) &&
           std::ranges::all_of(text, [](char c) { return is_in_name(c, false); });
}

LocatedText with_stand_ins(const LocatedText& text, const std::vector<Variable>& variables,
                           bool others_stay) {
    if (text.bytes.find(stand_in) != text.bytes.npos || variables.size() > 64)
        throw NotUnderstood({1, 1}, "in this file, or with so many variables, none can be replaced");
    LocatedText result;
    for (Walk walk(text); !walk.done();) {
        const Walk begin = walk;
        const Spot spot = walk.spot();
        const bool is_dollar = walk.skip("$$");
        const VariableUse use = !is_dollar && walk.peek() == '$' ? skip_variable(walk) : VariableUse();
        const auto found = std::find_if(variables.rbegin(), variables.rend(), [&](const Variable& one) {
            return one.name == use.name && (!use.otherwise || !use.also_if_empty || !one.value.bytes.empty());
        });
        if (found == variables.rend()) {
            if (!use.name.empty() && !use.otherwise && !others_stay)
                begin.refuse("this variable is not set; give it with --env NAME=VALUE",
                             "$" + use.name + " is not set; give it with --env " + use.name + "=VALUE");
            const std::size_t end = std::max(walk.at(), begin.at() + 1);
            result.append(text, begin.at(), end);
            walk.move_to(end);
            continue;
        }
        for (const char byte : stand_in)
            result.append(byte, spot);
        result.append(static_cast<char>(0x80 + (variables.rend() - found - 1)), spot);
    }
    return result;
}

void put_values(ReadTokens& tokens, const std::vector<Variable>& variables) {
    for (ReadToken& token : tokens)
        for (std::size_t at = 0; (at = token.text.find(stand_in, at)) != token.text.npos;) {
            const char last =
                at + stand_in.size() < token.text.size() ? token.text[at + stand_in.size()] : '\0';
            const std::size_t index = static_cast<unsigned char>(last) - std::size_t{0x80};
            if (index >= variables.size()) break; // of another file, where nothing is replaced
            const std::string& value = variables[index].value.bytes;
            token.text.replace(at, stand_in.size() + 1, value);
            at += value.size();
        }
}

} // namespace orvane
