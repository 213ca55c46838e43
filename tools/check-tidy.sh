#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs clang-tidy over the program's sources, as the sanitizer build compiles them: several at once,
# so that what they include is read once. Again only over those that changed, or over all when a
# header or the configuration did.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export build=build/asan seen=build/tidy
mkdir -p "$seen"

common=$(git ls-files -z --cached --others --exclude-standard -- .clang-tidy '*.h' |
    xargs -0 cat | sha256sum | cut -d' ' -f1)
export common

check_one() {
    local key
    # The sources that a joined one includes belong to it.
    key=$({ echo "$common" "$1"; cat "$1"; sed -n 's/^#include "\(.*\.cpp\)"$/\1/p' "$1" | xargs -r cat; } |
        sha256sum | cut -d' ' -f1)
    [ ! -f "$seen/$key" ] || return 0
    clang-tidy-19 --quiet --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-deprecated-declarations \
        --extra-arg=-Wno-ignored-gch -p "$build" "$1" 2> /dev/null || { echo "clang-tidy: $1" >&2; return 1; }
    touch "$seen/$key"
}
export -f check_one

# The libraries' and the program's own; not what tools have written, nor the tests.
# shellcheck disable=SC2016 # "$1" is for the inner shell
sed -n "s#^ *\"file\": \"$PWD/\(.*\)\".*#\1#p" "$build/compile_commands.json" |
    grep -E "^(VelloryCore|vellory)/.*\.cpp$|^$build/(VelloryCore|vellory)/.*/Unity/unity_.*\.cxx$" |
    grep -vE "/unity_qml|_qmlcache" |
    xargs -d '\n' -n 1 -P "$(nproc)" bash -c 'check_one "$1"' _
echo "clang-tidy: clean"
