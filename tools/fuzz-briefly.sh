#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# fuzz-briefly.sh [SECONDS]: builds the fuzz targets and runs each from its seeds for a few seconds.
# What one finds lies in build/fuzz/found/TARGET.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/setup.sh
export seconds=${1:-3}
export found=$PWD/build/fuzz/found

run() {
    local name=$1
    mkdir -p "$found/$name"
    if ! "build/fuzz/fuzz/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$found/$name/" "$found/$name" "fuzz/corpus/$name" > "$found/$name.log" 2>&1; then
        tail -30 "$found/$name.log"
        echo "Fuzzing $name found a fault; see $found/$name" >&2
        exit 1
    fi
    grep -h '^Done' "$found/$name.log" | sed "s/^/fuzz $name: /"
}
export -f run

build_preset fuzz
# As many at a time as the machine has processors; the first fault fails the whole.
for source in fuzz/*.cpp; do
    basename "$source" .cpp
done | xargs -P "$(nproc)" -I{} bash -euo pipefail -c 'run {}'
echo "Fuzzing: clean"
