// What can follow what on a command line, for the shells' completions.
#pragma once

#include "own/option_table.hpp"
#include "text/lists.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvane::completing {

/// What follows an option or a flag, in one word that all scripts understand: "" nothing, - anything, -d a directory, -f a
/// file, -c a command; else the words that it can be, separated by spaces.
using Values = std::string;

struct Choice {
    std::string text;
    std::string meaning;
    Values values{};
};

std::vector<Choice> flag_choices();
std::vector<Choice> verb_choices();
/// The verb's own options.
std::vector<Choice> option_choices(const Verb& verb);
/// What its arguments can be; FLAGS or COMMAND for a verb that takes flags, and perhaps a command after them.
Values what_follows(const Verb& verb);

/// As bash and zsh write a table of values by text.
std::string table(const std::vector<Choice>& choices);
/// A name for a function: of letters, digits and underscores.
std::string function_name(std::string_view program);
/// In single quotes, with `escaped` for each one inside.
std::string quoted(std::string_view text, std::string_view escaped);
/// `script` with each @name@ replaced.
std::string filled(std::string script, const std::vector<std::pair<std::string, std::string>>& parts);

/// A script for the flags of a server called `program`, or for this tool's own command line.
using Write = std::string(const std::string& program, bool is_tool);

struct Shell {
    std::string_view name;
    Write* script;
};
Write bash, zsh, fish, powershell;
inline constexpr Shell shells[] = {{"bash", bash}, {"zsh", zsh}, {"fish", fish}, {"powershell", powershell}};

} // namespace orvane::completing
