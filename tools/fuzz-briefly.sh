#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# fuzz-briefly.sh [SECONDS [PRESET]]: builds the fuzz targets and runs each from its seeds for a few
# seconds. The sanitizer build holds them too; `fuzz` is faster for longer runs. What one finds lies in
# build/PRESET/found/TARGET.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/setup.sh
export seconds=${1:-3}
preset=${2:-asan}
export build=build/$preset
export found=$PWD/$build/found

run() {
    local name=$1
    mkdir -p "$found/$name"
    if ! "$build/fuzz/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$found/$name/" "$found/$name" "fuzz/corpus/$name" > "$found/$name.log" 2>&1; then
        tail -30 "$found/$name.log"
        echo "Fuzzing $name found a fault; see $found/$name" >&2
        exit 1
    fi
    grep -h '^Done' "$found/$name.log" | sed "s/^/fuzz $name: /"
}
export -f run

build_preset "$preset"
# As many at a time as the machine has processors; the first fault fails the whole.
for source in fuzz/*.cpp; do
    basename "$source" .cpp
done | xargs -P "$(nproc)" -I{} bash -euo pipefail -c 'run {}'
echo "Fuzzing: clean"
