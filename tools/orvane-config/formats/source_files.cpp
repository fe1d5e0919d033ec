// The files that one command line is read from, and the parts of it that are no flags.
#include "formats/source_files.hpp"

#include "formats/content.hpp"
#include "formats/format_table.hpp"
#include "text/lists.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// Without its directory, and the suffix of Windows.
std::string_view program_name(std::string_view program) {
    program.remove_prefix(std::min(program.find_last_of("/\\") + 1, program.size()));
    return program.ends_with(".exe") ? program.substr(0, program.size() - 4) : program;
}

bool is_shell_with_command(const ReadTokens& tokens) {
    constexpr std::string_view shells[] = {"sh", "bash", "dash", "ksh", "zsh"};
    return tokens.size() > 2 && contains(shells, program_name(tokens[0].text)) &&
           tokens[1].text.starts_with('-') && !tokens[1].text.starts_with("--") &&
           tokens[1].text.ends_with('c');
}

/// The words of a text that is one word of another.
ReadTokens command_in(const ReadToken& token) {
    const LocatedText text{token.text, std::vector<Spot>(token.text.size(), token.spot)};
    return read_sh(text);
}

/// How many tokens `env` and what it takes are.
std::size_t size_of_env(const ReadTokens& tokens) {
    std::size_t size = 1;
    while (size < tokens.size() && (tokens[size].text == "-i" || tokens[size].text == "-" ||
                                    tokens[size].text.find('=') != std::string::npos))
        ++size;
    if (size < tokens.size() && tokens[size].text.starts_with('-'))
        throw NotUnderstood(tokens[size].spot, "of env, only -i and NAME=VALUE are read");
    return size;
}

void drop(ReadTokens& tokens, std::size_t count) {
    tokens.erase(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(count));
}

} // namespace

LocatedText SourceFiles::open(const std::string& path) {
    const std::string name = name_of(path);
    const std::string content = content_of(path, name);
    refuse_unless_utf8(content, name);
    LocatedText text = located(content);
    for (Spot& spot : text.spots)
        spot.file = static_cast<std::uint32_t>(paths.size());
    paths.push_back(path);
    notes.push_back("also read " + name);
    return text;
}

std::vector<Variable> variables_of(const LocatedText& text) {
    std::vector<Variable> variables;
    for (Walk walk(text); !walk.done();) {
        walk.skip_any_of(" \t\r\n");
        if (walk.done()) break;
        if (walk.peek() == '#' || walk.peek() == ';') {
            walk.skip_to("\n");
            continue;
        }
        const Walk begin = walk;
        Variable& one = variables.emplace_back();
        while (!walk.done() && walk.peek() != '=' && walk.peek() != '\n')
            one.name += walk.next();
        one.name.erase(one.name.find_last_not_of(" \t") + 1);
        if (!walk.skip("=")) begin.refuse("this line is not NAME=value");
        walk.skip_any_of(" \t");
        const char quote = walk.peek() == '"' || walk.peek() == '\'' ? walk.next() : '\0';
        while (!walk.done() && (quote != 0 ? walk.peek() != quote : walk.peek() != '\n')) {
            if (walk.peek() == '\\' ||
                (quote != '\'' && std::string_view("$`'\"").find(walk.peek()) != std::string_view::npos))
                walk.refuse("what this character means here is not certain; quote the value with '");
            const Spot spot = walk.spot();
            one.value.append(walk.next(), spot);
        }
        if (quote != 0 && !walk.skip(std::string_view(&quote, 1))) begin.refuse("this quote is not closed");
        while (quote == 0 && !one.value.bytes.empty() &&
               std::string_view(" \t\r").find(one.value.bytes.back()) != std::string_view::npos)
            one.value.bytes.pop_back(), one.value.spots.pop_back();
        if (walk.skip_any_of(" \t\r"); !walk.done() && walk.peek() != '\n')
            walk.refuse("something follows the value");
    }
    return variables;
}

ReadTokens unwrapped(ReadTokens tokens) {
    while (tokens.size() > 1) {
        if (is_shell_with_command(tokens))
            tokens = command_in(tokens[2]);
        else if (program_name(tokens[0].text) == "env" && !tokens[1].text.starts_with("--"))
            drop(tokens, size_of_env(tokens));
        else if (tokens[0].text == "exec")
            drop(tokens, 1);
        else
            break;
    }
    return tokens;
}

bool calls_this_tool(const ReadTokens& tokens) {
    return tokens.size() > 1 && program_name(tokens[0].text) == "orvane-config";
}

} // namespace orvane
