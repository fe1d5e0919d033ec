#!/usr/bin/env bash
# Follows docs/adding-a-flag.md in a copy of the tree: every hunk has to fit, and the tests of what it adds have to pass.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
work=$PWD/build/guide
rm -rf "$work"
mkdir -p "$work/tree"
git ls-files -z --cached --others --exclude-standard | tar --create --null --files-from=- --ignore-failed-read | tar --extract -C "$work/tree"
awk '/^```diff$/ { hunk = 1; next } /^```$/ { hunk = 0 } hunk' docs/adding-a-flag.md >"$work/hunks.diff"

cd "$work/tree"
git init --quiet
# A moved hunk still says where it goes; one whose surroundings have changed does not.
git apply "$work/hunks.diff"
cmake -S . -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_UNITY_BUILD=ON \
    -DZEP_CONFIG_TOOL=OFF -DCMAKE_CXX_COMPILER_LAUNCHER=ccache
ninja -C "$work/build" parse_test records_test
"$work/build/tests/parse_test" --gtest_brief=1
"$work/build/tests/records_test" --gtest_brief=1
scripts/settings-schema >schema.json
for setting in drain_timeout drain DrainSettings; do
    grep -q "\"$setting\": {" schema.json || { echo "the schema has no $setting" >&2; exit 1; }
done
# Of the tool, the list that has to name every flag is enough.
c++ -std=c++20 -fsyntax-only -I include -I platform/include -I tools/orvane-config tools/orvane-config/reference/reference.cpp
