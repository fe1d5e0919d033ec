// Formats that are only read: what yaml is recognized by, Dockerfiles, and settings with a name and a value on each line.
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <optional>

namespace orvane {
namespace {

std::string_view first_word(std::string_view line) {
    return line.substr(0, line.find_first_of(line_blanks));
}

/// Where the name ends and the value begins; none: it is no such line.
struct NamedValue {
    std::size_t name_end, value_begin;
};
std::optional<NamedValue> named_value(std::string_view line) {
    constexpr std::string_view in_names = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_.-";
    const std::size_t name = std::min(line.find_first_not_of(in_names), line.size());
    const std::size_t mark = std::min(line.find_first_not_of(line_blanks, name), line.size());
    if (name == 0 || line[0] == '-' || mark == line.size() || (line[mark] != '=' && line[mark] != ':'))
        return {};
    const bool has_blank = mark + 1 < line.size() && line_blanks.find(line[mark + 1]) != line_blanks.npos;
    const std::size_t value = line.find_first_not_of(line_blanks, mark + 1);
    // host:8080 is no name with a value, A=b --flag is a command line, A=(b) an array, and A=--flag is for another program.
    if (value == line.npos || (line[mark] == ':' && !has_blank) || line.find(" --") != line.npos ||
        line[value] == '(' || line.substr(value).starts_with("--"))
        return {};
    return NamedValue{name, value};
}

/// Calls it with each line but comments, and where it begins.
template <class Use>
void for_each_entry(std::string_view text, const Use& use) {
    for_each_line(text, [&](std::string_view line, std::size_t from) {
        if (line[0] != '#' && line[0] != ';') use(line, from);
    });
}

/// An instruction and what follows it, continued lines put together.
std::vector<LocatedText> instructions(const LocatedText& text) {
    std::vector<LocatedText> lines;
    bool is_continued = false;
    for_each_entry(text.bytes, [&](std::string_view line, std::size_t from) {
        if (line[0] == ';') return;
        LocatedText piece = part(text, from, from + line.size());
        if (!is_continued) lines.emplace_back();
        is_continued = line.ends_with('\\');
        if (is_continued) piece.bytes.back() = ' ';
        lines.back().append(piece, 0, piece.bytes.size());
    });
    return lines;
}

struct Instruction {
    ReadTokens tokens{};
    bool is_shell = false;
};

Instruction command_of(const LocatedText& line, std::size_t name) {
    const std::size_t begin = std::min(line.bytes.find_first_not_of(line_blanks, name), line.bytes.size());
    const LocatedText command = part(line, begin, line.bytes.size());
    if (command.bytes.starts_with('[')) return {read_json(command), false};
    return {read_sh(command), true};
}

} // namespace

bool is_yaml(std::string_view text) {
    constexpr std::string_view keys[] = {"apiVersion", "kind",    "metadata",   "services", "version",
                                         "args",       "command", "containers", "spec"};
    const std::string_view line = first_line_of(text);
    const auto colon = line.find(':');
    const bool has_key =
        colon != line.npos && colon != 0 && (colon + 1 == line.size() || line[colon + 1] == ' ');
    const bool is_word = has_key && line.find_first_of(" \t'\"\\/-") > colon;
    return line.starts_with('{') || line.starts_with("- ") || first_word(line) == "---" ||
           line.starts_with("%YAML ") || (has_key && contains(keys, line.substr(0, colon))) ||
           (is_word && line.find(" --") == line.npos && !is_settings(text));
}

ReadTokens read_yaml(const LocatedText& text) {
    SourceFiles none;
    return read_manifest(text, none);
}

bool is_dockerfile(std::string_view text) {
    constexpr std::string_view names[] = {"FROM", "ARG", "CMD", "ENTRYPOINT"};
    const std::string_view line = first_line_of(text);
    return contains(names, first_word(line)) && first_word(line).size() < line.size();
}

ReadTokens read_dockerfile(const LocatedText& text) {
    Instruction entry, command;
    for (const LocatedText& line : instructions(text)) {
        const std::string_view name = first_word(line.bytes);
        if (name == "FROM") entry = command = {};
        if (name == "ENTRYPOINT") entry = command_of(line, name.size());
        if (name == "CMD") command = command_of(line, name.size());
    }
    if (entry.tokens.empty() && command.tokens.empty())
        throw NotUnderstood({1, 1}, "its last image has neither ENTRYPOINT nor CMD");
    if (entry.is_shell) return entry.tokens; // a shell takes no CMD
    if (!entry.tokens.empty() && command.is_shell)
        throw NotUnderstood(command.tokens[0].spot,
                            "after ENTRYPOINT, only the CMD of the form [\"...\"] can be flags");
    entry.tokens.insert(entry.tokens.end(), command.tokens.begin(), command.tokens.end());
    return entry.tokens;
}

bool is_settings(std::string_view text) {
    std::size_t others = 0, settings = 0;
    for_each_entry(text, [&](std::string_view line, std::size_t) {
        if (named_value(line))
            ++settings;
        else if (!is_section(line))
            ++others;
    });
    return settings != 0 && others == 0;
}

ReadTokens read_settings(const LocatedText& text) {
    ReadTokens tokens;
    bool has_section = false;
    for_each_entry(text.bytes, [&](std::string_view line, std::size_t from) {
        constexpr std::string_view truths[] = {"true", "false", "yes", "no", "on", "off"};
        if (is_section(line)) {
            if (has_section || !tokens.empty())
                throw NotUnderstood(
                    text.spots[from],
                    "these are settings of several sections; give a file with only the server's");
            has_section = true;
            return;
        }
        const auto found = named_value(line);
        if (!found) throw NotUnderstood(text.spots[from], "this line is not a name and a value");
        std::string value(line.substr(found->value_begin));
        const Spot spot = text.spots[from + found->value_begin];
        const bool is_quoted =
            value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.ends_with(value[0]);
        if (is_quoted) value = value.substr(1, value.size() - 2);
        if (value.find_first_of(is_quoted ? "\"'" : "\"'#;") != value.npos)
            throw NotUnderstood(spot, "where this value ends is not certain; write flags instead");
        if (!is_quoted && contains(truths, value))
            throw NotUnderstood(
                spot, "a switch has no value; write flags instead, and this one only to turn it on");
        tokens.push_back({"--" + std::string(line.substr(0, found->name_end)), text.spots[from]});
        tokens.push_back({value, spot});
    });
    return tokens;
}

} // namespace orvane
