#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# virtual-display.sh STAY PROGRAM [ARGUMENT...]: opens the program in a display of its own, takes a
# picture of what is on it, says how many apps it shows and where the picture lies, and leaves
# nothing running. With STAY "yes" it stays open until it is interrupted.
set -euo pipefail

stay=$1
shift
picture=${VELLORY_PICTURE:-build/vellory.png}
work=$(mktemp -d)
pids=()
cleanup() {
    # Newest first: the program before the display it draws on.
    local i
    for ((i = ${#pids[@]} - 1; i >= 0; --i)); do
        kill "${pids[i]}" 2> /dev/null || true
        wait "${pids[i]}" 2> /dev/null || true
    done
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

mkfifo "$work/display" "$work/report"
Xvfb -displayfd 3 -screen 0 1440x900x24 -nolisten tcp 3> "$work/display" > /dev/null 2>&1 &
pids+=($!)
read -r -t 20 number < "$work/display" || { echo "The virtual display did not start." >&2; exit 1; }
export DISPLAY=:$number
openbox --sm-disable > /dev/null 2>&1 &
pids+=($!)

# A meeting point of its own: the program must open here and not ask one that runs elsewhere to.
mkdir -m 700 "$work/runtime"
XDG_RUNTIME_DIR=$work/runtime "$@" --report > "$work/report" &
program=$!
pids+=("$program")
exec 4< "$work/report"
if ! read -r -t 60 -u 4 count; then
    kill "$program" 2> /dev/null || true
    status=0
    wait "$program" || status=$?
    echo "The grid did not open (the program ended with $status)." >&2
    exit 1
fi
# The icons are loaded behind the first frame; the program says when the last one has arrived.
read -r -t 60 -u 4 _ || true

[ "$count" != "1 apps" ] || count="1 app"
mkdir -p "$(dirname "$picture")"
xwd -silent -root | convert xwd:- "png:$picture"
echo "Vellory shows $count; a picture of its window is in $picture"
if [ "$stay" = yes ]; then
    echo "It stays open on display $DISPLAY until you press Ctrl-C."
    wait "$program"
fi
