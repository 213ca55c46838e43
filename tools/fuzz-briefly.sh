#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# fuzz-briefly.sh [SECONDS]: runs every fuzz target from its seeds for a few seconds each. What it
# finds lies in build/fuzz/found.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-3}
found=$PWD/build/fuzz/found
for source in fuzz/*.cpp; do
    name=$(basename "$source" .cpp)
    mkdir -p "$found/$name"
    if ! "build/fuzz/fuzz/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$found/$name/" "$found/$name" "fuzz/corpus/$name" > "$found/$name.log" 2>&1; then
        tail -30 "$found/$name.log"
        echo "Fuzzing $name found a fault; see $found/$name" >&2
        exit 1
    fi
    grep -h '^Done' "$found/$name.log" | sed "s/^/fuzz $name: /"
done
