# shellcheck shell=bash
# Sourced by the other scripts. need PACKAGE...: installs the Debian packages that are missing, and lists them.

need() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "installing: ${missing[*]}" >&2
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    quietly "${sudo[@]}" apt-get update
    quietly "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

# quietly COMMAND...: shows the output only if the command fails; then the script ends.
quietly() {
    local log status
    log=$(mktemp)
    if "$@" >"$log" 2>&1 </dev/null; then
        rm -f "$log"
    else
        status=$?
        cat "$log" >&2
        rm -f "$log"
        echo "failed ($status): $*" >&2
        exit 1
    fi
}

# show_steps WHAT: reads ninja's output and shows the progress: on one line of a terminal, elsewhere on a few lines.
show_steps() {
    local number of quarter=-1
    while IFS='[/]' read -r _ number of _; do
        [[ $number$of =~ ^[0-9]+$ ]] || continue
        if [ -t 2 ]; then
            printf '\r%s: %d of %d' "$1" "$number" "$of" >&2
            [ "$number" -lt "$of" ] || echo >&2
        elif [ $((4 * number / of)) -gt "$quarter" ]; then
            quarter=$((4 * number / of))
            printf '%s: %d of %d\n' "$1" "$number" "$of" >&2
        fi
    done
}

# build_with_steps WHAT FOLDER TARGET: builds with ninja and shows the progress. Silent if there is nothing to do.
build_with_steps() {
    local log
    log=$(mktemp)
    if ! NINJA_STATUS='[%f/%t]' ninja -C "$2" "$3" </dev/null 2>&1 | tee "$log" | show_steps "$1"; then
        [ ! -t 2 ] || echo >&2
        cat "$log" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}

# shellcheck disable=SC2034 # used by those who source this
build_packages=(g++ cmake ninja-build libboost1.81-dev libssl-dev libutfcpp-dev libyaml-cpp-dev)
# What the tests need wherever they run.
# shellcheck disable=SC2034
test_packages=(binutils ccache clang curl fish gdb git libgtest-dev mandoc pkg-config procps python3 python3-jsonschema python3-yaml strace systemd valgrind zsh)
# What builds the page.
# shellcheck disable=SC2034
page_packages=(emscripten clang-19 lld-19 llvm-19 libc++-19-dev)
# What builds the Debian packages.
# shellcheck disable=SC2034
debian_packages=(debhelper dpkg-dev)
