#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Checks who includes whom. Each layer knows only those before it:
# Support, core subsystems, platform ports, model, shell; main.cpp alone knows the platform's
# implementations. And that the views have their colours from Theme. Prints every line that breaks a
# rule.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
broken=0

# forbid WHAT FILES PATTERN: no line of FILES may match PATTERN.
forbid() {
    local what=$1 pattern=$2
    shift 2
    local found
    found=$(git ls-files -z --cached --others --exclude-standard -- "$@" |
        xargs -0 -r grep -nE "^[[:space:]]*(#[[:space:]]*include|import)[[:space:]]+[\"<]?($pattern)" /dev/null || true)
    if [ -n "$found" ]; then
        printf '%s:\n%s\n' "$what" "$found"
        broken=1
    fi
}

# may_know SUBSYSTEM OTHERS: of the core's subsystems it includes Support, itself and OTHERS only.
subsystems='Apps Workspaces Board Search Usage Desk Ask Import Uninstall Updates Input'
may_know() {
    local subsystem=$1 others='' other
    shift
    for other in $subsystems; do
        case " $subsystem $* " in *" $other "*) ;; *) others+="${others:+|}$other/" ;; esac
    done
    forbid "$subsystem knows ${*:-Support} and nothing further" "$others" "VelloryCore/$subsystem/*"
}

forbid 'VelloryCore knows no Qt, no window system and no application' \
    'Q[A-Z]|Qt|xcb|X11|gio|glib|gdk|platform/|model/|shell/' 'VelloryCore/*'
may_know Support
may_know Apps
may_know Workspaces Apps
may_know Board Apps Workspaces
may_know Search Apps Workspaces Board
may_know Usage Apps Workspaces
may_know Desk Apps Workspaces
may_know Ask Apps Workspaces Search
may_know Import Apps Board
may_know Uninstall Apps
may_know Updates Apps
may_know Input
forbid 'Ports are plain: standard types and the core' \
    'Q[A-Z]|Qt|xcb|X11|gio|glib|gdk|model/|shell/|platform/(qt|linux|macos)/' 'vellory/platform/*.h' \
    ':!vellory/platform/*/*'
forbid 'A platform knows ports, not the model' 'model/|shell/' 'vellory/platform/*/*'
forbid 'The Linux platform does without Qt' 'Q[A-Z]|Qt' 'vellory/platform/linux/*'
forbid 'The model knows QtCore at most, and no platform' \
    'QGui|QQuick|QQml|QWindow|QImage|QPixmap|QScreen|QWidget|QtGui|QtQuick|xcb|X11|gio|glib|gdk|shell/|platform/(qt|linux|macos)/' \
    'vellory/model/*'
forbid 'Only main.cpp picks the platform' 'xcb|X11|gio|glib|gdk|platform/(qt|linux|macos)/' \
    'vellory/shell/*' ':!vellory/shell/main.cpp'

colours=$(git ls-files -z --cached --others --exclude-standard -- 'vellory/shell/qml/*.qml' \
    ':!vellory/shell/qml/Theme.qml' |
    xargs -0 -r grep -nE '"(#[0-9a-fA-F]{3,8}|white|black|gr[ae]y|red|green|blue)"|Qt\.(rgba|hsla|hsva)' \
        /dev/null || true)
if [ -n "$colours" ]; then
    printf 'Colours live in Theme:\n%s\n' "$colours"
    broken=1
fi

[ "$broken" -eq 0 ] && echo "Layers: clean"
exit "$broken"
