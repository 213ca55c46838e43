#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Checks who includes whom. Each layer knows only those before it:
# Support, core subsystems, platform ports, model, shell; main.cpp alone knows the platform's
# implementations. Prints every line that breaks a rule.
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

subsystems='Board|Search|Usage|Workspaces|Desk|Ask|Import|Uninstall|Updates|Input'
forbid 'VelloryCore knows no Qt, no window system and no application' \
    'Q[A-Z]|Qt|xcb|X11|gio|glib|gdk|platform/|model/|shell/' 'VelloryCore/*'
forbid 'Support knows no subsystem' "($subsystems)/" 'VelloryCore/Support/*'
forbid 'The board knows only Support and the workspaces it is backed up with' \
    'Search/|Usage/|Desk/|Ask/|Import/|Uninstall/|Updates/|Input/' 'VelloryCore/Board/*'
forbid 'Search knows the board, workspaces and nothing further' \
    'Usage/|Desk/|Ask/|Import/|Uninstall/|Updates/|Input/' 'VelloryCore/Search/*'
forbid 'Usage knows workspaces and nothing further' \
    'Search/|Desk/|Ask/|Import/|Uninstall/|Updates/' 'VelloryCore/Usage/*'
forbid 'Workspaces stand below what uses them' \
    'Board/Board|Search/|Usage/|Desk/|Ask/|Import/|Uninstall/|Updates/' 'VelloryCore/Workspaces/*'
forbid 'The desk knows workspaces only' \
    'Search/|Usage/|Ask/|Import/|Uninstall/|Updates/|Input/' 'VelloryCore/Desk/*'
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

[ "$broken" -eq 0 ] && echo "Layers: clean"
exit "$broken"
