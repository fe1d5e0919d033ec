// The files that one command line is read from, and the parts of it that are no flags.
#include "formats/source_files.hpp"

#include "formats/content.hpp"
#include "formats/format_table.hpp"
#include "text/lists.hpp"

#include <algorithm>

namespace orvane {
namespace {

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

bool is_flag(const ReadToken& token) {
    return token.text.starts_with("--");
}

/// NAME=VALUE in front of a program with flags.
bool sets_variable(const ReadTokens& tokens) {
    const std::string& text = tokens[0].text;
    return text.find('=') != text.npos && is_variable_name(text.substr(0, text.find('='))) &&
           !is_flag(tokens[1]) && std::ranges::any_of(tokens, is_flag);
}

void drop(ReadTokens& tokens, std::size_t count) {
    tokens.erase(tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(count));
}

} // namespace

std::string_view program_name(std::string_view program) {
    program.remove_prefix(std::min(program.find_last_of("/\\") + 1, program.size()));
    return program.ends_with(".exe") ? program.substr(0, program.size() - 4) : program;
}

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

ReadTokens unwrapped(ReadTokens tokens, bool by_shell) {
    while (tokens.size() > 1) {
        if (is_shell_with_command(tokens))
            tokens = command_in(tokens[2]);
        else if (program_name(tokens[0].text) == "env" && !tokens[1].text.starts_with("--"))
            drop(tokens, size_of_env(tokens));
        else if (tokens[0].text == "exec" || (by_shell && sets_variable(tokens)))
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
