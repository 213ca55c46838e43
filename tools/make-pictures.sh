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

workspaces() {
    cat > "$work/support/workspaces.json" << 'WORKSPACES'
[
 {"id": "5B1F2A60-0001-4D7C-9A51-2C0E5D0A0001", "name": "Deep Work", "symbol": "target",
  "items": [{"app": {"_0": "code-studio"}}, {"app": {"_0": "terminal"}},
   {"app": {"_0": "web-browser"}}, {"file": {"_0": "/home/me/Projects/Atlas"}},
   {"url": {"_0": "https://docs.example.com/atlas"}}],
  "windows": [{"bundleID": "code-studio", "index": 0,
   "frame": {"x": 0, "y": 0, "width": 1200, "height": 900}},
   {"bundleID": "terminal", "index": 0,
   "frame": {"x": 1200, "y": 0, "width": 720, "height": 900}}],
  "others": "hide", "focusGrid": false,
  "triggers": [{"schedule": {"weekdays": [2, 3, 4, 5, 6], "hour": 9, "minute": 0}},
   {"focus": {"_0": "Do Not Disturb"}}]},
 {"id": "5B1F2A60-0002-4D7C-9A51-2C0E5D0A0002", "name": "Writing", "symbol": "pencil.line",
  "items": [{"app": {"_0": "writer"}}, {"app": {"_0": "dictionary"}}, {"app": {"_0": "music"}}],
  "windows": [], "others": "keep", "triggers": [], "focusGrid": false},
 {"id": "5B1F2A60-0003-4D7C-9A51-2C0E5D0A0003", "name": "Meetings", "symbol": "video",
  "items": [{"app": {"_0": "meetings"}}, {"app": {"_0": "calendar"}}, {"app": {"_0": "mail"}}],
  "windows": [], "others": "keep", "focusGrid": false,
  "triggers": [{"display": {"_0": "Office"}}]},
 {"id": "5B1F2A60-0004-4D7C-9A51-2C0E5D0A0004", "name": "Photos", "symbol": "camera",
  "items": [{"app": {"_0": "photo-library"}}, {"app": {"_0": "drawing"}}],
  "windows": [], "others": "quit", "triggers": [], "focusGrid": false},
 {"id": "5B1F2A60-0005-4D7C-9A51-2C0E5D0A0005", "name": "Evening", "symbol": "moon",
  "items": [{"app": {"_0": "music"}}, {"app": {"_0": "arcade"}}],
  "windows": [], "others": "keep", "triggers": [], "focusGrid": false}
]
WORKSPACES
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
workspaces
picture workspace-strip.png --view workspace-strip --size 1280x800
picture workspace-editor.png --view workspace-editor --size 1280x800
picture focus-session.png --view focus-session --size 1280x800
rm "$work/support/workspaces.json"
used
picture smart-row.png --view smart-row --size 1280x800
picture habit-bar.png --view habit-bar --size 1280x800
picture settings.png --view settings --size 1280x800
