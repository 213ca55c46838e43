#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs clang-tidy over the program's sources, again only over those whose result may have changed:
# a source is remembered by what the preprocessor makes of it together with the configuration.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=build/dev
seen=build/tidy
mkdir -p "$seen"

check_one() {
    local source=$1 key
    key=$(
        {
            cat .clang-tidy "$source"
            # Its own headers: the project's files that the compiler saw.
            ninja -C "$build" -t deps 2> /dev/null | awk -v source="$source" '
                /^[^ ]/ { on = index($0, source ".o") > 0 }
                on && /^ / { print $1 }' | grep -F "$PWD/" | grep -v "/build/" | sort -u |
                xargs -r cat 2> /dev/null
        } | sha256sum | cut -d' ' -f1
    )
    [ -f "$seen/$key" ] && return 0
    clang-tidy-19 --quiet -p "$build" "$source" 2> "$seen/$$.log" || { cat "$seen/$$.log" >&2; return 1; }
    touch "$seen/$key"
}
export -f check_one
export build seen

# shellcheck disable=SC2016 # "$1" is for the inner shell
git ls-files -z --cached --others --exclude-standard -- 'VelloryCore/*.cpp' 'vellory/*.cpp' |
    xargs -0 -n 1 -P "$(nproc)" bash -c 'set -euo pipefail; check_one "$1"' _
echo "clang-tidy: clean"
