# lines.zsh SCRIPT LINES ANSWERS: what zsh offers for each of the lines, in a terminal of its own.
zmodload zsh/zpty
if [[ $1 != inside ]]; then
    zpty inner zsh -f -i || exit 77
    zpty -w inner "source ${(q)0:a} inside ${(q)1} ${(q)2} ${(q)3}"
    zpty -w -n inner $'\x14'
    for _ in {1..600}; do
        [[ ! -e $3.done ]] || break
        zpty -r -t inner said
        sleep 0.05
    done
    zpty -d inner
    [[ -e $3.done ]]
    exit
fi
autoload -Uz compinit
compinit -u -D
source $2
typeset -a lines=("${(@f)$(<$3)}") found
answers=$4
compadd() {
    local -a words
    # These only ask; nothing is offered.
    if [[ -z ${argv[(r)-[OAD]]} ]]; then
        builtin compadd -O words "$@"
        found+=($words)
    fi
    builtin compadd "$@"
}
complete_lines() {
    local line
    for line in $lines; do
        BUFFER=$line CURSOR=$#line found=()
        zle list-choices
        print -r -- "${(pj:\t:)found}" >>$answers
    done
    : >$answers.done
}
zle -N complete_lines
bindkey '^T' complete_lines
