// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// What the typed text finds, in tiles of the grid's size, best first.
Item {
    id: results

    required property Launcher launcher

    TileGrid {
        anchors.fill: parent
        tiles: results.launcher.results
        columns: results.launcher.columns
        rows: results.launcher.rows
        sideMargin: Theme.sideMargin(width)
        mirrored: results.launcher.mirrored
        highlight: results.launcher.searching ? results.launcher.highlight : -1
        animateMoves: false
        // One page: what does not fit is reached by typing more, or by moving the highlight on.
        position: results.launcher.searching && results.launcher.highlight >= 0
                  ? Math.floor(results.launcher.highlight / Math.max(1, columns * rows)) : 0
        delegate: TileView {
            iconSize: results.launcher.iconSize
            showLabel: results.launcher.showLabels
            onActivated: newWindow => results.launcher.activate(tileId, newWindow)
        }
    }

    EmptyState {
        anchors.centerIn: parent
        visible: results.launcher.results.count === 0
        title: qsTr("No matching apps")
        text: qsTr("Try what the app does (“edit photos”), maths (“12*7”) or “:” for emoji")
    }
}
