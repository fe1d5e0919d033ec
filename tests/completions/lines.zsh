# lines.zsh FUNCTIONS SCRIPT LINES ANSWERS: what zsh offers for each of the lines, in a terminal of its own, with the functions
# of a directory and perhaps a script.
zmodload zsh/zpty
if [[ $1 != inside ]]; then
    zpty inner zsh -f -i || exit 77
    zpty -w inner "source ${(q)0:a} inside ${(q)1} ${(q)2} ${(q)3} ${(q)4}"
    zpty -w -n inner $'\x14'
    for _ in {1..600}; do
        [[ ! -e $4.done ]] || break
        zpty -r -t inner said
        sleep 0.05
    done
    zpty -d inner
    [[ -e $4.done ]]
    exit
fi
fpath=($2 $fpath)
autoload -Uz compinit
compinit -u -D
[[ -z $3 ]] || source $3
typeset -a lines=("${(@f)$(<$4)}") found
answers=$5
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
