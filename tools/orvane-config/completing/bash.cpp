// The completion for bash.
#include "completing/choices.hpp"

namespace orvane::completing {
namespace {

constexpr auto bash_common = R"(@name@_values() {
    local cur=${COMP_WORDS[COMP_CWORD]}
    case $1 in
    -) return ;;
    # A ; in a word has to be quoted, as in a file's name.
    -[cdf] | *\;*) compopt -o filenames 2>/dev/null ;;
    esac
    case $1 in
    -[cdf]) mapfile -t COMPREPLY < <(compgen "$1" -- "$cur") ;;
    *) mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur") ;;
    esac
}
@name@_flags() {
    local -A values=(@values@)
    local -i at=$1
    local word
    while ((at < COMP_CWORD)); do
        word=${COMP_WORDS[at++]}
        if [[ $2 && $word == -- ]]; then
            if ((at == COMP_CWORD)); then @name@_values -c; else @name@_values -f; fi
            return
        fi
        [[ $word && ${values[$word]-} ]] || continue
        if ((at++ == COMP_CWORD)); then
            @name@_values "${values[$word]}"
            return
        fi
    done
    @name@_values '@flags@'
}
)";

constexpr auto bash_server = R"(@name@_server() { @name@_flags 1; }
complete -F @name@_server @program@
)";

constexpr auto bash_tool = R"(@name@() {
    local -A values=()
    local -i at=2
    local cur=${COMP_WORDS[COMP_CWORD]} own= others= word
    if ((COMP_CWORD == 1)); then
        @name@_values '@verbs@'
        return
    fi
    case ${COMP_WORDS[1]} in
@cases@    esac
    # The tool's own options come first.
    while ((at < COMP_CWORD)); do
        word=${COMP_WORDS[at]}
        if [[ $word == -- ]]; then
            ((++at))
            own=
            break
        fi
        [[ $word && ${values[$word]+known} ]] || break
        ((++at))
        [[ ${values[$word]} ]] || continue
        [[ ${COMP_WORDS[at]} != = ]] || ((++at))
        if ((at++ == COMP_CWORD)); then
            @name@_values "${values[$word]}"
            return
        fi
    done
    case $others in
    FLAGS) @name@_flags "$at" ;;
    COMMAND) @name@_flags "$at" command ;;
    *) @name@_values "$others" ;;
    esac
    if ((at == COMP_CWORD)); then
        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -W "$own" -- "$cur")
    fi
}
complete -F @name@ @program@
)";

std::string bash_cases() {
    return joined(verbs, "", [](const Verb& verb) {
        const auto options = option_choices(verb);
        return "    " + std::string(verb.name) + ")\n        values=(" + table(options) + ")\n        own='" +
               joined(options, " ", &Choice::text) + "' others='" + what_follows(verb) + "' ;;\n";
    });
}

} // namespace

std::string bash(const std::string& program, bool is_tool) {
    const auto flags = flag_choices();
    return filled(std::string(bash_common) + (is_tool ? bash_tool : bash_server),
                  {{"cases", is_tool ? bash_cases() : ""},
                   {"verbs", joined(verb_choices(), " ", &Choice::text)},
                   {"values", table(flags)},
                   {"flags", joined(flags, " ", &Choice::text)},
                   {"name", function_name(program)},
                   {"program", program}});
}

} // namespace orvane::completing
