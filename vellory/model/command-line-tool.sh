#!/bin/sh
# vellory command line (installed by vellory › Settings › General). Drives the app through vellory:// links.

# Percent-encodes its one argument: all but letters, digits and "-._~".
enc() {
    # -IS: nothing in the folder it is called in, or in the user's own packages, takes part.
    if [ -x /usr/bin/python3 ] && /usr/bin/python3 -IS -c 'import sys, urllib.parse
print(urllib.parse.quote(sys.argv[1], safe="", errors="surrogateescape"))' "$1" 2> /dev/null; then
        return
    fi
    printf '%s' "$1" | od -An -v -tx1 | LC_ALL=C awk '
        BEGIN {
            for (code = 33; code < 127; ++code) {
                char = sprintf("%c", code)
                if (char ~ /[-A-Za-z0-9._~]/) plain[sprintf("%02x", code)] = char
            }
        }
        { for (i = 1; i <= NF; ++i) printf "%s", ($i in plain) ? plain[$i] : "%" toupper($i) }'
}

# Hands a link to the program that is registered for it, which is started if it does not run.
open_link() {
    # The program obeys none that is longer.
    if [ "${#1}" -gt 65536 ]; then
        echo "vellory: that is too long for a link" >&2
        exit 1
    fi
    if [ -d /System/Library/CoreServices ]; then
        exec open "$1"
    fi
    # Asked by its name on the session bus it answers several times sooner than through an opener,
    # which looks up first who it is.
    if [ -n "${DBUS_SESSION_BUS_ADDRESS-}" ] || [ -S "${XDG_RUNTIME_DIR-}/bus" ]; then
        dbus-send --session --print-reply=literal --dest=com.quorvel.vellory /com/quorvel/vellory \
            com.quorvel.vellory.Links.Open "string:$1" > /dev/null 2>&1 && return
    fi
    # Without input: an opener that falls back to a browser for the terminal must not wait for keys.
    # This one ends well also after it has failed, but not without a word.
    [ -n "$(gio open "$1" 2>&1 < /dev/null || echo failed)" ] || return 0
    xdg-open "$1" < /dev/null > /dev/null 2>&1 && return
    open "$1" < /dev/null > /dev/null 2>&1 && return
    echo "vellory: nothing opens $1; is vellory installed?" >&2
    exit 1
}

# Prints the name of every workspace, one a line. A quote ends each record: by turns they lie outside
# and inside the strings of the JSON text, and a string goes on where a backslash stood before one.
workspaces() {
    if [ -d /System/Library/CoreServices ]; then
        support=$HOME/Library/Application\ Support
    else
        case ${XDG_DATA_HOME-} in /*) support=$XDG_DATA_HOME ;; *) support=$HOME/.local/share ;; esac
    fi
    LC_ALL=C awk '
        function hex(digits,    i, value) {
            for (i = 1; i <= 4; ++i)
                value = value * 16 + index("0123456789abcdef", tolower(substr(digits, i, 1))) - 1
            return value
        }
        function utf8(code) {
            if (code < 128) return sprintf("%c", code)
            if (code < 2048) return sprintf("%c%c", 192 + int(code / 64), 128 + code % 64)
            if (code < 65536)
                return sprintf("%c%c%c", 224 + int(code / 4096), 128 + int(code / 64) % 64, 128 + code % 64)
            return sprintf("%c%c%c%c", 240 + int(code / 262144), 128 + int(code / 4096) % 64,
                128 + int(code / 64) % 64, 128 + code % 64)
        }
        # What the text between two quotes stands for. Control characters become spaces: a name is one
        # line, and says nothing to the terminal.
        function decoded(text,    out, at, escape, code, low) {
            out = ""
            while ((at = index(text, "\\")) > 0) {
                out = out substr(text, 1, at - 1)
                escape = substr(text, at + 1, 1)
                text = substr(text, at + 2)
                if (escape != "u") {
                    out = out (index("bfnrt", escape) ? " " : escape)
                    continue
                }
                code = hex(text)
                text = substr(text, 5)
                if (code >= 55296 && code < 56320 && text ~ /^\\u[Dd][C-Fc-f]/) {
                    low = hex(substr(text, 3))
                    text = substr(text, 7)
                    code = 65536 + (code - 55296) * 1024 + low - 56320
                }
                out = out (code < 32 || code == 127 ? " " : code >= 55296 && code < 57344 ? "?" : utf8(code))
            }
            out = out text
            gsub(/[\001-\037\177]/, " ", out)
            return out
        }
        BEGIN { RS = "\"" }
        inside {
            text = text $0
            match($0, /\\*$/)
            if (RLENGTH % 2) { text = text "\""; next }
            inside = 0
            if (depth != 2) next
            if (key == "name" && expected) print decoded(text)
            key = expected ? "" : decoded(text)
            expected = 0
            next
        }
        {
            if (depth == 2) expected = $0 ~ /^[ \t\r\n]*:[ \t\r\n]*$/
            depth += gsub(/[[{]/, "") - gsub(/[]}]/, "")
            inside = 1
            text = ""
        }' "$support/vellory/workspaces.json" 2> /dev/null
    return 0
}

usage() {
    echo "usage: vellory [open|toggle|close|settings|search <text>|ask <text>|workspace <name>|focus <name> [minutes]|layout <name>|time-machine|workspaces]"
    exit 2
}

command=${1-open}
[ "$#" -eq 0 ] || shift
case $command in
    search | ask | workspace | ws | layout | focus) [ "$#" -gt 0 ] || usage ;;
esac
case $command in
    open | show) open_link "vellory://open" ;;
    toggle) open_link "vellory://toggle" ;;
    close) open_link "vellory://close" ;;
    settings) open_link "vellory://settings" ;;
    search) open_link "vellory://search?q=$(enc "$*")" ;;
    workspace | ws) open_link "vellory://workspace/$(enc "$*")" ;;
    focus)
        # The first word alone is the name, so that the second can be the minutes.
        minutes=${2:-25}
        case $minutes in *[!0-9]*) minutes=$(enc "$minutes") ;; esac
        open_link "vellory://focus-session/$(enc "$1")?minutes=$minutes"
        ;;
    layout) open_link "vellory://layout/$(enc "$*")" ;;
    ask) open_link "vellory://ask?q=$(enc "$*")" ;;
    time-machine | tm) open_link "vellory://time-machine" ;;
    workspaces) workspaces ;;
    *) usage ;;
esac
