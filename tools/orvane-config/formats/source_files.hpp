// The files that one command line is read from.
#pragma once

#include "formats/format.hpp"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// The first is the one that was named; the others are those that it refers to. Spot::file counts them.
struct SourceFiles {
    std::vector<std::string> paths{};
    std::function<std::string(const std::string& path)> name_of{}; ///< for people
    std::string root{};            ///< of the file system that the first one is in, if that is known
    bool is_for_container = false; ///< other paths in it are those of another file system
    std::map<std::string, std::string> contained{}; ///< files of that one whose content is in the first one
    std::vector<std::string> notes{};               ///< what was taken from where

    /// Reads one more. Throws std::runtime_error when it cannot be read.
    LocatedText open(const std::string& path);
};

/// ExecStart= of a unit with its drop-ins, and with the values of specifiers and variables where they are certain. Throws
/// NotUnderstood where they are not.
ReadTokens read_unit(const LocatedText& unit, SourceFiles& files);

/// The command line of the one container in a manifest.
ReadTokens read_manifest(const LocatedText& text, SourceFiles& files);

/// The lines NAME=value of a file of variables; for a shell, `export` may be before them.
struct Variable {
    std::string name;
    LocatedText value;
};
std::vector<Variable> variables_of(const LocatedText& text, bool may_export = false);
bool is_variable_name(std::string_view text);

/// Where NAME=value is in the text, on a line of its own.
struct Assignment {
    std::string name; ///< as it is written, perhaps with blanks around it
    std::size_t begin = 0, value = 0, end = 0;
    char quote = 0; ///< around the value
};

/// Moves to the next line that is neither blank nor a comment. False: there is none.
bool skip_to_assignment(Walk& walk);

/// Moves to the end of its value. False: this is none.
bool skip_assignment(Walk& walk, Assignment& one, bool may_export);

/// $NAME, ${NAME}, or ${NAME:-value}, which has a value of its own.
struct VariableUse {
    std::string name; ///< empty: it is none of these
    std::optional<std::string> otherwise{};
    bool also_if_empty = false;
};
/// Moves over it.
VariableUse skip_variable(Walk& walk);

/// The text with something in the place of variables, and then the values instead. Unless others may stay, throws
/// NotUnderstood at one that is not set.
LocatedText with_stand_ins(const LocatedText& text, const std::vector<Variable>& variables, bool others_stay);
void put_values(ReadTokens& tokens, const std::vector<Variable>& variables);

/// What a file is instead of flags, and what to do; empty where that is not certain.
std::string foreign_kind(std::string_view text);

/// Whether not even one token may have been meant for a flag.
bool has_no_flags(const ReadTokens& tokens);

/// Without what only starts the program: env, sh -c, exec; where a shell reads them, also NAME=VALUE.
ReadTokens unwrapped(ReadTokens tokens, bool by_shell = false);

/// Without its directory, and the suffix of Windows.
std::string_view program_name(std::string_view program);

/// Whether the program is this tool.
bool calls_this_tool(const ReadTokens& tokens);

} // namespace orvane
