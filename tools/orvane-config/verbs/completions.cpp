// The verb `completions`: scripts that teach a shell the flags.
#include "reference/reference.hpp"
#include "verbs/call.hpp"

#include <algorithm>
#include <cctype>
#include <functional>
#include <ostream>

namespace orvane {
namespace {

template <class Text>
std::string joined(const std::vector<Text>& words, const char* between) {
    std::string text;
    for (const Text& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

std::vector<std::string> flags_that(const std::function<bool(const Reference&)>& wanted) {
    std::vector<std::string> flags;
    for (const Reference& one : references())
        if (wanted(one)) flags.emplace_back(one.flag);
    return flags;
}

std::vector<std::string> every_flag() {
    return flags_that([](const Reference&) { return true; });
}

bool names_directory(const Reference& one) {
    return one.value == "<directory>";
}
bool names_file(const Reference& one) {
    return one.value == "<file>";
}
bool has_another_value(const Reference& one) {
    return !one.value.empty() && !names_directory(one) && !names_file(one) && keywords(one).empty();
}

/// A shell function's name.
std::string function_name(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return "_" + text;
}

void bash_reply(const std::string& what, std::ostream& out) {
    out << "mapfile -t COMPREPLY < <(compgen " << what << " -- \"$cur\")";
}

/// A function that completes a flag, or the value after one.
void write_bash_flags(const std::string& function, std::ostream& out) {
    out << function
        << "() {\n    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n    case $prev "
           "in\n";
    const auto value_case = [&](const std::vector<std::string>& flags, const std::string& what) {
        out << "    " << joined(flags, "|") << ") ";
        if (what == "-d" || what == "-f") out << "compopt -o filenames 2>/dev/null; ";
        if (!what.empty()) {
            bash_reply(what, out);
            out << "; ";
        }
        out << "return ;;\n";
    };
    value_case(flags_that(names_directory), "-d");
    value_case(flags_that(names_file), "-f");
    for (const Reference& one : references())
        if (!keywords(one).empty())
            value_case({std::string(one.flag)}, "-W '" + joined(keywords(one), " ") + "'");
    value_case(flags_that(has_another_value), "");
    out << "    esac\n    ";
    bash_reply("-W '" + joined(every_flag(), " ") + "'", out);
    out << "\n}\n";
}

/// The verbs, or those that take the server's flags.
std::vector<std::string> verb_names(bool with_flags = false) {
    std::vector<std::string> names;
    for (const Verb& verb : verbs)
        if (!with_flags || takes_flags(verb)) names.emplace_back(verb.name);
    return names;
}

std::vector<std::string> options_with_value() {
    std::vector<std::string> options;
    for (const OwnOption& option : own_options)
        if (!option.value.empty()) options.push_back(spelled(option));
    return options;
}

/// What can follow the verb: its options, and its words where they are known.
std::vector<std::string> words_after(const Verb& verb) {
    std::vector<std::string> words;
    if (verb.arguments.find('|') != verb.arguments.npos)
        for (const std::string_view word : split(verb.arguments, '|'))
            words.emplace_back(word);
    for (const OwnOption& option : own_options)
        if (takes(verb, option)) words.push_back(spelled(option));
    return words;
}

/// The branch that completes the value of an own option.
void write_bash_value(const OwnOption& option, std::ostream& out) {
    out << "    " << spelled(option) << ") ";
    if (option.value == "FILE") out << "compopt -o filenames 2>/dev/null; ";
    if (option.value == "FILE")
        bash_reply("-f", out);
    else if (option.value.find('|') != option.value.npos)
        bash_reply("-W '" + joined(split(option.value, '|'), " ") + "'", out);
    else
        out << ":";
    out << "; return ;;\n";
}

/// A function that completes a verb and its options, and leaves the server's flags to another.
void write_bash_tool(const std::string& function, const std::string& flags, std::ostream& out) {
    out << function
        << "() {\n    local cur=${COMP_WORDS[COMP_CWORD]} own= at=2\n    if ((COMP_CWORD == 1)); then\n      "
           "  ";
    bash_reply("-W '" + joined(verb_names(), " ") + "'", out);
    out << "\n        return\n    fi\n    case ${COMP_WORDS[1]} in\n";
    for (const Verb& verb : verbs)
        out << "    " << verb.name << ") own='" << joined(words_after(verb), " ") << "' ;;\n";
    out << "    esac\n    # The tool's own options come first, some followed by a value.\n"
           "    while ((at < COMP_CWORD)) && [[ \" $own \" == *\" ${COMP_WORDS[at]} \"* ]]; do\n"
           "        case ${COMP_WORDS[at]} in "
        << joined(options_with_value(), "|")
        << ") ((++at)) ;; esac\n"
           "        ((++at))\n"
           "    done\n"
           "    # Beyond the place of the cursor: that is where the value goes.\n"
           "    ((at > COMP_CWORD)) && case ${COMP_WORDS[COMP_CWORD-1]} in\n";
    for (const OwnOption& option : own_options)
        if (!option.value.empty()) write_bash_value(option, out);
    out << "    esac\n    case ${COMP_WORDS[1]} in\n    " << joined(verb_names(true), "|") << ") " << flags
        << " ;;\n    esac\n"
           "    if ((at == COMP_CWORD)); then\n"
           "        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -W \"$own\" -- \"$cur\")\n"
           "    fi\n}\n";
}

void write_bash(const std::string& name, bool tool, std::ostream& out) {
    // The tool's function and a server's must differ, whatever the server is called.
    const std::string flags = function_name(name) + (tool ? "_flags" : "_server");
    write_bash_flags(flags, out);
    if (tool) write_bash_tool(function_name(name), flags, out);
    out << "complete -F " << (tool ? function_name(name) : flags) << " " << name << '\n';
}

/// A PowerShell list of quoted words.
std::string listed(const std::vector<std::string>& words) {
    return "'" + joined(words, "','") + "'";
}

void write_powershell(const std::string& name, bool tool, std::ostream& out) {
    out << "Register-ArgumentCompleter -Native -CommandName '" << name << "' -ScriptBlock {\n"
        << "    param($word, $line, $position)\n"
        << "    $before = @($line.CommandElements | Where-Object { $_.Extent.EndOffset -lt $position } | "
           "ForEach-Object { \"$_\" })\n"
        << "    $directories = @(" << listed(flags_that(names_directory)) << ")\n"
        << "    $files = @(" << listed(flags_that(names_file)) << ")\n"
        << "    $others = @(" << listed(flags_that(has_another_value)) << ")\n    $keywords = @{\n";
    for (const Reference& one : references())
        if (!keywords(one).empty())
            out << "        '" << one.flag << "' = @(" << listed(keywords(one)) << ")\n";
    out << "    }\n    $flags = @(" << listed(every_flag())
        << ")\n    $last = if ($before.Count) { $before[-1] } else { '' }\n    $words = $flags\n";
    if (tool) out << "    if ($before.Count -eq 1) { $words = @(" << listed(verb_names()) << ") }\n";
    out << "    if ($keywords.ContainsKey($last)) { $words = $keywords[$last] }\n"
        << "    if ($others -contains $last) { return }\n"
        << "    if ($directories -contains $last) { $words = @(Get-ChildItem -Directory -Path \"$word*\" | "
           "ForEach-Object FullName) }\n"
        << "    if ($files -contains $last) { $words = @(Get-ChildItem -Path \"$word*\" | ForEach-Object "
           "FullName) }\n"
        << "    $words | Where-Object { $_ -like \"$word*\" -or $directories + $files -contains $last } |\n"
        << "        ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }\n}\n";
}

} // namespace

ExitCode completions(const Call& call) {
    const std::string own_name = "orvane-config";
    const std::string name = call.value(own("for"), own_name);
    const bool plain = std::all_of(name.begin(), name.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_' || c == '.';
    });
    if (!plain || name.empty())
        throw Misused(spelled(own("for")) + " takes a program's name, of letters, digits, '-', '_' and '.'");
    const auto write = call.words.front() == u"bash" ? write_bash : write_powershell;
    write(name, name == own_name, call.out);
    return ExitCode::done;
}

} // namespace orvane
