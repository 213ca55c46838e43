#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# install-for-user.sh [BUILD]: installs what lies in the build folder (build/release without one) for
# this user alone, into ~/.local, and has the desktop route vellory:// links to it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=${1:-build/release}
prefix=$HOME/.local
if [ "${XDG_DATA_HOME:-$prefix/share}" != "$prefix/share" ]; then
    echo "The desktop looks for apps in $XDG_DATA_HOME; this installs into $prefix/share." >&2
    echo "Use cmake --install $build --prefix FOLDER with a FOLDER whose share/ the desktop knows." >&2
    exit 1
fi
# A program that runs keeps its file open: the new one gets a file of its own.
rm -f "$prefix/libexec/vellory/vellory"
cmake --install "$build" --prefix "$prefix" > /dev/null

entry=com.quorvel.vellory.desktop
if command -v update-desktop-database > /dev/null; then
    update-desktop-database -q "$prefix/share/applications"
elif command -v gio > /dev/null; then
    gio mime x-scheme-handler/vellory "$entry" > /dev/null
elif command -v xdg-mime > /dev/null; then
    xdg-mime default "$entry" x-scheme-handler/vellory
else
    echo "Nothing here tells the desktop of vellory:// links; desktop-file-utils does." >&2
fi
# The bus that runs already may not have seen the folder when it started.
dbus-send --session --dest=org.freedesktop.DBus /org/freedesktop/DBus \
    org.freedesktop.DBus.ReloadConfig 2> /dev/null || true

echo "Vellory is installed in $prefix; the command is $prefix/bin/vellory"
case ":$PATH:" in *":$prefix/bin:"*) ;; *) echo "$prefix/bin is not on your PATH yet; it is from the next login on." ;; esac
