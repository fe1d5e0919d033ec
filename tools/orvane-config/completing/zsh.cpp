// The completion for zsh: an autoloaded function, which can also be sourced.
#include "completing/choices.hpp"

namespace orvane::completing {
namespace {

constexpr auto zsh_common = R"(#compdef @program@
@name@_values() {
    case $1 in
    -) _message value ;;
    -d) _path_files -/ ;;
    -f) _files ;;
    *) compadd -- ${(s: :)1} ;;
    esac
}
@name@_flags() {
    local -A values=(@values@)
    local -i at=$1
    local word
    while ((at < CURRENT)); do
        word=$words[at++]
        if [[ -n $2 && $word == -- ]]; then
            shift $((at - 1)) words
            ((CURRENT -= at - 1))
            _normal
            return
        fi
        [[ -n $values[$word] ]] || continue
        if ((at++ == CURRENT)); then
            @name@_values $values[$word]
            return
        fi
    done
    local -a flags=(
@flags@    )
    _describe -t flags flag flags
}
)";

constexpr auto zsh_server = R"(@name@() { @name@_flags 2; }
)";

constexpr auto zsh_tool = R"(@name@() {
    local -A values=()
    local -a own=() verbs=(
@verbs@    )
    local -i at=3
    local others= word
    if ((CURRENT == 2)); then
        _describe -t verbs verb verbs
        return
    fi
    case $words[2] in
@cases@    esac
    # The tool's own options come first.
    while ((at < CURRENT)); do
        word=$words[at]
        if [[ $word == -- ]]; then
            ((++at))
            own=()
            break
        fi
        ((${+values[$word]})) || break
        ((++at))
        [[ -n $values[$word] ]] || continue
        if ((at++ == CURRENT)); then
            @name@_values $values[$word]
            return
        fi
    done
    ((at == CURRENT && $#own)) && _describe -t own-options option own
    case $others in
    FLAGS) @name@_flags $at ;;
    COMMAND) @name@_flags $at command ;;
    *) @name@_values $others ;;
    esac
}
)";

// Autoloaded, the file is the function's body when it is called first.
constexpr auto zsh_end =
    R"(if [[ $funcstack[1] == @file@ ]]; then @name@ "$@"; else compdef @name@ @program@; fi
)";

/// A line for each, with its meaning.
std::string zsh_described(const std::vector<Choice>& choices) {
    return joined(choices, "", [](const Choice& choice) {
        return "        " + quoted(choice.text + ":" + choice.meaning, "'\\''") + "\n";
    });
}

std::string zsh_cases() {
    return joined(verbs, "", [](const Verb& verb) {
        const auto options = option_choices(verb);
        return "    " + std::string(verb.name) + ")\n        values=(" + table(options) +
               ")\n        own=(\n" + zsh_described(options) + "        )\n        others='" +
               what_follows(verb) + "' ;;\n";
    });
}

} // namespace

std::string zsh(const std::string& program, bool is_tool) {
    const auto flags = flag_choices();
    return filled(std::string(zsh_common) + (is_tool ? zsh_tool : zsh_server) + zsh_end,
                  {{"cases", is_tool ? zsh_cases() : ""},
                   {"verbs", zsh_described(verb_choices())},
                   {"values", table(flags)},
                   {"flags", zsh_described(flags)},
                   {"file", "_" + program},
                   {"name", "_" + function_name(program)},
                   {"program", program}});
}

} // namespace orvane::completing
