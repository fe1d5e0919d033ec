// The completion for fish.
#include "completing/choices.hpp"

#include <boost/algorithm/string/replace.hpp>

namespace orvane::completing {
namespace {

constexpr auto fish_common = R"(function @name@_values
    switch $argv[1]
        case -
        case -d
            __fish_complete_directories (commandline -ct)
        case -f
            __fish_complete_path (commandline -ct)
        case '*'
            string split ' ' -- $argv[1]
    end
end
function @name@_value_of
    switch $argv[1]
@values@    end
end
# Completes what follows the words. They are behind the name of the function of a verb's own options, and what else it takes.
function @name@_flags
    set -l takes $argv[1]
    set -e argv[1]
    while set -q argv[1]
        if test "$takes" = COMMAND -a "$argv[1]" = --
            if set -q argv[2]
                __fish_complete_subcommand --commandline $argv[2..-1] (commandline -ct)
            else
                __fish_complete_command
            end
            return
        end
        set -l values (@name@_value_of $argv[1])
        set -e argv[1]
        test -n "$values"; or continue
        if not set -q argv[1]
            @name@_values $values
            return
        end
        set -e argv[1]
    end
@flags@end
)";

constexpr auto fish_server = R"(complete -c @program@ -f -a '(@name@_flags FLAGS (commandline -opc)[2..-1])'
)";

constexpr auto fish_tool = R"(function @name@
    set -l words (commandline -opc)
    set -e words[1]
    if not set -q words[1]
@verbs@        return
    end
    set -l verb $words[1]
    set -e words[1]
    set -l ended
    # The tool's own options come first.
    while set -q words[1]
        if test "$words[1]" = --
            set -e words[1]
            set ended 1
            break
        end
        set -l values (@name@_option $verb $words[1]); or break
        set -e words[1]
        test -n "$values"; or continue
        if not set -q words[1]
            @name@_values $values
            return
        end
        set -e words[1]
    end
    if not set -q words[1]; and test -z "$ended"
        @name@_options $verb
    end
    switch $verb
@others@    end
end
# What follows an option of a verb; fails if it has none of that name.
function @name@_option
    switch "$argv"
@option_values@        case '*'
            return 1
    end
end
function @name@_options
    switch $argv[1]
@options@    end
end
complete -c @program@ -f -a '(@name@)'
)";

/// fish knows two escapes inside single quotes.
std::string fish_quoted(std::string text) {
    boost::replace_all(text, "\\", "\\\\");
    return quoted(text, "\\'");
}

std::string branch(const std::string& word, const std::string& command) {
    return "        case " + word + "\n            " + command + "\n";
}

/// A command that prints the choices and their meanings.
std::string fish_described(const std::vector<Choice>& choices, const std::string& indent) {
    std::string command = indent + "printf '%s\\t%s\\n'";
    for (const Choice& choice : choices)
        command += " \\\n" + indent + "    " + choice.text + " " + fish_quoted(choice.meaning);
    return command + "\n";
}

std::string flag_values() {
    std::string text;
    for (const Choice& choice : flag_choices())
        if (!choice.values.empty()) text += branch(choice.text, "echo " + fish_quoted(choice.values));
    return text;
}

std::string option_values() {
    return joined(verbs, "", [](const Verb& verb) {
        return joined(option_choices(verb), "", [&](const Choice& choice) {
            return branch("'" + std::string(verb.name) + " " + choice.text + "'",
                          "echo " + fish_quoted(choice.values));
        });
    });
}

std::string fish_options() {
    return joined(verbs, "", [](const Verb& verb) {
        return "        case " + std::string(verb.name) + "\n" +
               fish_described(option_choices(verb), "            ");
    });
}

std::string fish_others() {
    return joined(verbs, "", [](const Verb& verb) {
        return branch(std::string(verb.name), takes_flags(verb)
                                                  ? "@name@_flags " + what_follows(verb) + " $words"
                                                  : "@name@_values " + fish_quoted(what_follows(verb)));
    });
}

} // namespace

std::string fish(const std::string& program, bool is_tool) {
    return filled(std::string(fish_common) + (is_tool ? fish_tool : fish_server),
                  {{"values", flag_values()},
                   {"flags", fish_described(flag_choices(), "    ")},
                   {"verbs", fish_described(verb_choices(), "        ")},
                   {"others", fish_others()},
                   {"option_values", option_values()},
                   {"options", fish_options()},
                   {"name", "_" + function_name(program)},
                   {"program", program}});
}

} // namespace orvane::completing
