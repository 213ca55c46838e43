// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The few apps above the grid, under their quiet heading: one row of the grid's columns, in smaller
// icons. Takes no room while there are none.
Item {
    id: smartRow

    required property Suggestions suggestions
    required property Launcher launcher
    property real openClock: 0

    readonly property bool shown: suggestions.row.count > 0
    readonly property int iconSize: Math.max(Theme.smallestIcon, Math.round(launcher.iconSize * Theme.smartRowScale))
    readonly property int tileHeight: iconSize + (launcher.showLabels ? 6 : 2) * Theme.unit
    readonly property real cellWidth: (width - 2 * Theme.sideMargin(width)) / Math.max(1, launcher.columns)

    height: shown ? heading.height + tileHeight : 0

    Text {
        id: heading

        anchors {
            left: parent.left
            leftMargin: Theme.sideMargin(smartRow.width) + Math.max(Theme.unit, (smartRow.cellWidth - smartRow.iconSize) / 2)
        }
        height: 3 * Theme.unit
        verticalAlignment: Text.AlignVCenter
        text: smartRow.suggestions.heading
        color: Theme.textDim
        font.pixelSize: Theme.labelSize
        style: Theme.dark ? Text.Raised : Text.Normal
        styleColor: Theme.textShadow
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    TileGrid {
        id: grid

        anchors { left: parent.left; right: parent.right; top: heading.bottom }
        height: smartRow.tileHeight
        tiles: smartRow.suggestions.row
        columns: smartRow.launcher.columns
        rows: 1
        sideMargin: Theme.sideMargin(width)
        mirrored: smartRow.launcher.mirrored
        highlight: smartRow.suggestions.highlight
        rippleOrigin: smartRow.launcher.rippleOrigin
        animateMoves: false
        delegate: TileView {
            iconSize: smartRow.iconSize
            showLabel: smartRow.launcher.showLabels
            openClock: smartRow.openClock
            onActivated: newWindow => smartRow.suggestions.activate(tileId, newWindow)
            onToggled: smartRow.suggestions.activate(tileId, true)
            onMenuRequested: smartRow.launcher.showMenu(tileId)
        }
    }
}
