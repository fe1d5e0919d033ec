#!/usr/bin/env bash
# reproducible.sh FOLDER: builds the Debian packages again and compares them, to the bit, with those in FOLDER. The second build
# has another path, umask, time zone, language and no compiler cache. diffoscope says what differs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/packages.sh

first=$1
second=$(mktemp -d)/another/place
trap 'rm -rf "${second%/another/place}"' EXIT
(umask 027 && TZ=Asia/Kathmandu LC_ALL=C.UTF-8 CCACHE_DISABLE=1 quietly scripts/debian-packages "$second")

compared=0
for package in "$first"/*.deb; do
    if ! cmp -s "$package" "$second/${package##*/}"; then
        need diffoscope-minimal
        diffoscope "$package" "$second/${package##*/}" || true
        exit 1
    fi
    sha256sum "$package"
    compared=$((compared + 1))
done
[ "$compared" -ge 3 ] || { echo "only $compared packages to compare in $first" >&2; exit 1; }
