// SPDX-License-Identifier: Apache-2.0
pragma Singleton
import QtQuick

// Every colour, size and duration of the views, in device-independent pixels on an 8-pixel rhythm.
QtObject {
    property bool dark: true
    property bool reduceMotion: false

    readonly property color text: dark ? "#ffffff" : "#16181d"
    readonly property color textDim: dark ? "#a3ffffff" : "#a316181d" // 64 %
    readonly property color textUnmatched: dark ? "#b8ffffff" : "#b816181d" // 72 %
    readonly property color textShadow: dark ? "#80000000" : "#00000000"
    readonly property color accent: "#5e7ce2"
    // What stands on the accent.
    readonly property color accentInk: "#ffffff"
    readonly property color accentInkDim: "#ccffffff" // 80 %
    readonly property color accentHover: "#40ffffff"
    readonly property color fieldFill: dark ? "#24ffffff" : "#8cffffff"
    readonly property color fieldBorder: dark ? "#33ffffff" : "#1f000000"
    readonly property color highlightFill: dark ? "#24ffffff" : "#66ffffff" // 14 %
    readonly property color highlightBorder: dark ? "#33ffffff" : "#33000000" // 20 %
    readonly property color selectionFill: "#4d5e7ce2" // the accent at 30 %
    readonly property color editFill: dark ? "#e6202430" : "#f2ffffff"
    readonly property color menuFill: dark ? "#fa2b2f3b" : "#fcfbfbfd"
    readonly property color menuHover: dark ? "#1fffffff" : "#14000000"
    readonly property color separator: dark ? "#1fffffff" : "#1a000000"
    readonly property color scrim: dark ? "#66000000" : "#33000000"
    readonly property color bandFill: "#335e7ce2"
    readonly property color folderFill: dark ? "#29ffffff" : "#70ffffff" // 16 %
    readonly property color windowFill: dark ? "#262a36" : "#f5f6fa"
    readonly property color panelFill: dark ? "#f4262a36" : "#f6f5f6fa"
    readonly property color panelBorder: dark ? "#24ffffff" : "#1a000000"
    readonly property color noticeFill: dark ? "#f0303442" : "#f7ffffff"
    readonly property color chipHover: dark ? "#3dffffff" : "#b3ffffff"
    readonly property color ringTrack: dark ? "#29ffffff" : "#24000000"
    readonly property color warning: dark ? "#f2a65a" : "#b45309"
    readonly property color controlBorder: dark ? "#59ffffff" : "#4d000000"
    readonly property color scrollMark: dark ? "#66ffffff" : "#4d000000"
    readonly property color runningDot: dark ? "#d9ffffff" : "#b3000000"
    readonly property color badgeFill: "#e5484d"
    readonly property color badgeInk: "#ffffff"
    readonly property color hintFill: "#f2c94c"
    readonly property color hintText: "#201a00"

    // The desktop's own emoji; other fonts have some of them as outlines.
    readonly property string emojiFamily: "emoji"
    readonly property string fixedFamily: "monospace"

    readonly property int unit: 8
    readonly property int edge: 40
    readonly property int fieldWidth: 360
    readonly property int fieldHeight: 40
    readonly property int dot: 8
    readonly property int dotCurrent: 20
    readonly property int dotGap: 12
    readonly property int labelGap: 8
    readonly property int labelSize: 13
    readonly property int bodySize: 14
    readonly property int headingSize: 17
    readonly property int titleSize: 24
    readonly property int sumSize: 40
    readonly property int emojiSize: 40
    readonly property int headingHeight: 32
    readonly property int sumHeight: 112
    readonly property int emojiHeight: 104
    readonly property int controlHeight: 32
    readonly property int menuItemHeight: 32
    readonly property int menuWidth: 244
    readonly property int panelRadius: 20
    readonly property int panelPadding: 24
    readonly property int smallSize: 13
    readonly property int noticeHeight: 44
    readonly property int noticeEdge: 72
    readonly property int habitBarEdge: 12
    readonly property int dotEdgeOverBar: 60
    readonly property int settingsWidth: 760
    readonly property int settingsHeight: 624
    readonly property int documentWidth: 216
    readonly property int smallestIcon: 40
    readonly property real smartRowScale: 2 / 3 // of the grid's icons
    readonly property int symbol: 18
    readonly property int hintSize: 11
    readonly property int chipHeight: 32
    readonly property int chipWidth: 240
    readonly property int dockWidth: 400
    readonly property int rowHeight: 44
    readonly property int scrollMarkWidth: 4
    readonly property int highlightRadius: 20
    readonly property int folderPanelRadius: 28
    readonly property int runningDotSize: 4
    readonly property int badgeHeight: 20
    readonly property int badgeTextWidth: 36
    readonly property real folderRadius: 0.24 // of its size
    readonly property int minimumMargin: 48
    readonly property real marginShare: 0.06

    // Milliseconds; with reduced motion everything is a short cross-fade.
    readonly property int hover: reduceMotion ? 0 : 120
    readonly property int sinkDelay: reduceMotion ? 0 : 350
    readonly property int edgeDwell: 600 // a dragged tile at the display's edge turns the page
    readonly property int folderLeave: 350
    readonly property int makeRoom: reduceMotion ? 0 : 180
    readonly property int opening: reduceMotion ? 100 : 220
    readonly property int rippleSpread: reduceMotion ? 0 : 90
    readonly property int panelIn: reduceMotion ? 100 : 180
    readonly property int noticeIn: reduceMotion ? 100 : 180

    readonly property var folderTints: ({
        red: "#e5484d", orange: "#f0883e", yellow: "#f2c94c", green: "#3fb56b", teal: "#2fb5b0",
        blue: "#4c8df6", indigo: "#5e7ce2", purple: "#9b6cf0", pink: "#ea6ab3", brown: "#a5805c",
        gray: "#8b919d", graphite: "#5f6672"
    })

    function tint(name: string): color {
        return folderTints[name] ?? "transparent"
    }

    // The image source of a symbol in a colour.
    function symbolSource(name: string, color: color): string {
        return "image://symbols/" + encodeURIComponent(name) + "/" + String(color).slice(1)
    }

    function sideMargin(width: real): real {
        return Math.max(minimumMargin, width * marginShare)
    }
}
