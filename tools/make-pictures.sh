#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Renders the pictures of the README and of docs/ from a sample set of apps, so that they look the
# same on every machine. Needs a build (./run) and the Adwaita icon theme.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
program=build/release/vellory/shell/vellory
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/apps" "$work/support"

while IFS='|' read -r name icon categories; do
    id=$(tr 'A-Z ' 'a-z-' <<< "$name")
    printf '[Desktop Entry]\nType=Application\nName=%s\nExec=true\nIcon=%s\nCategories=%s\n' \
        "$name" "$icon" "$categories" > "$work/apps/$id.desktop"
done << 'APPS'
Web Browser|applications-internet|Network;WebBrowser;
Mail|internet-mail|Network;Email;
Chat|user-available|Network;InstantMessaging;
Meetings|camera-video|Network;InstantMessaging;
Calculator|accessories-calculator|Utility;
Terminal|utilities-terminal|System;TerminalEmulator;
Files|system-file-manager|System;FileManager;
Text Editor|accessories-text-editor|Utility;TextEditor;
Characters|accessories-character-map|Utility;
Screenshots|applets-screenshooter|Utility;
System Monitor|utilities-system-monitor|System;
Settings|preferences-system|Settings;
Writer|x-office-document|Office;WordProcessor;
Sheets|x-office-spreadsheet|Office;Spreadsheet;
Slides|x-office-presentation|Office;Presentation;
Calendar|x-office-calendar|Office;Calendar;
Drawing|applications-graphics|Graphics;VectorGraphics;
Photo Library|image-x-generic|Graphics;Photography;
Video Editor|video-x-generic|AudioVideo;Video;
Music|audio-x-generic|AudioVideo;Audio;
Recorder|audio-input-microphone|AudioVideo;Audio;
Code Studio|applications-development|Development;IDE;
Data Modelling and Engineering Workbench|applications-engineering|Development;
Arcade|applications-games|Game;
Cards|input-gaming|Game;CardGame;
Dictionary|accessories-dictionary|Dictionary;
Science Lab|applications-science|Education;Science;
Weather Report|weather-few-clouds|Unknown;
Fonts|preferences-desktop-font|Unknown;
Displays|preferences-desktop-display|Unknown;
Languages|preferences-desktop-locale|Unknown;
Wallpapers|preferences-desktop-wallpaper|Unknown;
Printers|printer|Unknown;
Keyboard|input-keyboard|Unknown;
Backups|drive-harddisk|Unknown;
Remote Desktop|preferences-desktop-remote-desktop|Unknown;
Accessibility|preferences-desktop-accessibility|Unknown;
Help|help-browser|Unknown;
APPS
# Not the first run: nothing greets.
printf '[General]\nhasSeenWelcome=true\n' > "$work/support/settings.conf"

# Somebody who has used it for weeks: a morning routine, and favourites at all times.
now=$(($(date +%s) - 978307200))
today=$((now / 86400))
launches() {
    local separator='' day app
    for day in $(seq 20 -1 1); do
        for app in mail chat calendar web-browser text-editor music code-studio terminal; do
            if [ $(((day * 7 + ${#app} * 3) % 8)) -lt 5 ]; then
                printf '%s{"app":"%s","at":%d}' "$separator" "$app" $((now - day * 86400 - ${#app} * 60))
                separator=,
            fi
        done
    done
}
habits() {
    local separator='' day app
    for day in 9 8 7 2 1; do
        for app in mail chat calendar; do
            printf '%s{"app":"%s","day":%d,"minute":540,"weekday":%d}' \
                "$separator" "$app" $((today - day)) $(((today - day + 1) % 7 + 1))
            separator=,
        done
    done
}
used() {
    printf '{"events":[%s],"limit":4000}' "$(launches)" > "$work/support/launches.json"
    printf '{"events":[%s],"keepDays":42}' "$(habits)" > "$work/support/habits.json"
}

picture() {
    local file=$1
    shift
    "$program" --screenshot "docs/pictures/$file" --apps "$work/apps" --support "$work/support" "$@"
    echo "docs/pictures/$file"
}
mkdir -p docs/pictures
picture grid.png --view grid --size 1280x800
picture grid-light.png --view grid --light --size 1280x800
picture folder.png --view folder --size 1280x800
picture context-menu.png --view context-menu --size 1280x800
picture dragging.png --view dragging --size 1280x800
picture history.png --view history --size 1280x800
picture search.png --view search --size 1280x800
used
picture smart-row.png --view smart-row --size 1280x800
picture habit-bar.png --view habit-bar --size 1280x800
picture settings.png --view settings --size 1280x800
