#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs clang-tidy over the program's sources; again only over those that changed, or over all when a
# header or the configuration did.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export build=build/dev seen=build/tidy
mkdir -p "$seen"

common=$(git ls-files -z --cached --others --exclude-standard -- .clang-tidy '*.h' |
    xargs -0 cat | sha256sum | cut -d' ' -f1)
export common

check_one() {
    local key
    key=$(cat "$1" - <<< "$common" | sha256sum | cut -d' ' -f1)
    [ ! -f "$seen/$key" ] || return 0
    clang-tidy-19 --quiet --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-deprecated-declarations \
        --extra-arg=-Wno-ignored-gch -p "$build" "$1" 2> /dev/null || { echo "clang-tidy: $1" >&2; return 1; }
    touch "$seen/$key"
}
export -f check_one

# shellcheck disable=SC2016 # "$1" is for the inner shell
git ls-files -z --cached --others --exclude-standard -- 'VelloryCore/*.cpp' 'vellory/*.cpp' |
    xargs -0 -n 1 -P "$(nproc)" bash -c 'check_one "$1"' _
echo "clang-tidy: clean"
