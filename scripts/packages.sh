# Sourced by the other scripts. need PACKAGE...: installs the Debian packages that are missing, and says which.

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

# quietly COMMAND...: shows what it printed only when it fails; then the script ends.
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

build_packages=(g++ cmake ninja-build libboost1.81-dev libutfcpp-dev libcli11-dev)
# What cpack asks for shared libraries and their dependencies.
debian_packages=(dpkg-dev file)
