// NAME=value on a line of its own: of a shell, or in a file for systemd.
#include "formats/source_files.hpp"

namespace orvane {
namespace {

/// What both a shell and systemd read.
LocatedText certain_value(Walk& walk, const Assignment& one) {
    LocatedText value;
    for (walk.move_to(one.value); walk.at() < one.end;) {
        if (one.quote != '\'' && walk.skip("\\\n")) continue;
        if (walk.peek() == '\\' ||
            (one.quote != '\'' && std::string_view("$`'\"").find(walk.peek()) != std::string_view::npos))
            walk.refuse("what this character means here is not certain; quote the value with '");
        const Spot spot = walk.spot();
        value.append(walk.next(), spot);
    }
    while (one.quote == 0 && !value.bytes.empty() && line_blanks.find(value.bytes.back()) != line_blanks.npos)
        value.bytes.pop_back(), value.spots.pop_back();
    return value;
}

} // namespace

bool skip_to_assignment(Walk& walk) {
    while (walk.skip_any_of(" \t\r\n"), walk.peek() == '#' || walk.peek() == ';')
        walk.skip_to("\n");
    return !walk.done();
}

bool skip_assignment(Walk& walk, Assignment& one, bool may_export) {
    if (may_export && walk.skip("export ")) walk.skip_any_of(" ");
    one.begin = walk.at();
    while (!walk.done() && walk.peek() != '=' && walk.peek() != '\n')
        one.name += walk.next();
    if (!walk.skip("=")) return false;
    walk.skip_any_of(" \t");
    one.quote = walk.peek() == '"' || walk.peek() == '\'' ? walk.next() : '\0';
    one.value = walk.at();
    while (!walk.done() && walk.peek() != (one.quote == 0 ? '\n' : one.quote))
        if (walk.next() == '\\' && one.quote != '\'' && !walk.done()) walk.next();
    one.end = walk.at();
    return true;
}

std::vector<Variable> variables_of(const LocatedText& text, bool may_export) {
    std::vector<Variable> variables;
    for (Walk walk(text); skip_to_assignment(walk);) {
        const Walk begin = walk;
        Assignment one;
        if (!skip_assignment(walk, one, may_export)) begin.refuse("this line is not NAME=value");
        one.name.erase(one.name.find_last_not_of(" \t") + 1);
        variables.push_back({one.name, certain_value(walk, one)});
        if (one.quote != 0 && !walk.skip(std::string_view(&one.quote, 1)))
            begin.refuse("this quote is not closed");
        if (walk.skip_any_of(line_blanks); !walk.done() && walk.peek() != '\n')
            walk.refuse("something follows the value");
    }
    return variables;
}

} // namespace orvane
