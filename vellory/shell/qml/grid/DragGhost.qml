// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The picture of a tile that the pointer carries, a little larger and with a shadow.
Item {
    id: ghost

    property var icons: []
    property bool isFolder: false
    property string tint: ""
    property string emoji: ""
    property string cover: ""
    // Where in the tile it was grasped.
    property point grip
    // Where the tile's own corner would be; it is let go from there.
    readonly property point tileTopLeft: Qt.point(x - faceOffset.x, y - faceOffset.y)
    property point faceOffset

    function show(tile: TileView, at: point): void {
        leaving.stop()
        icons = tile.icons
        isFolder = tile.isFolder
        tint = tile.tint
        emoji = tile.emoji
        cover = tile.cover
        width = tile.side
        height = tile.side
        faceOffset = Qt.point(tile.faceRect.x, tile.faceRect.y)
        const inTile = tile.mapFromItem(ghost.parent, at)
        grip = Qt.point(inTile.x - faceOffset.x, inTile.y - faceOffset.y)
        opacity = 1
        scale = Theme.reduceMotion ? 1 : 1.08
        visible = true
        follow(at)
    }
    function follow(at: point): void {
        x = at.x - grip.x
        y = at.y - grip.y
    }
    function hide(): void {
        if (!leaving.running)
            visible = false
    }
    // Into the tile that took it in.
    function vanishInto(centre: point): void {
        if (Theme.reduceMotion)
            return
        visible = true
        moveX.to = centre.x - width / 2
        moveY.to = centre.y - height / 2
        leaving.restart()
    }

    visible: false

    BorderImage {
        anchors.fill: parent
        anchors.margins: -32
        anchors.topMargin: -20
        anchors.bottomMargin: -44
        source: "image://shadow/32/35"
        border { left: 64; right: 64; top: 64; bottom: 64 }
    }
    Loader {
        anchors.fill: parent
        sourceComponent: ghost.isFolder ? folderFace : appFace
    }
    Component {
        id: appFace
        AppIcon {
            source: ghost.icons.length > 0 ? ghost.icons[0] : ""
            size: ghost.width
        }
    }
    Component {
        id: folderFace
        FolderFace {
            icons: ghost.icons
            tint: ghost.tint
            emoji: ghost.emoji
            cover: ghost.cover
            size: ghost.width
        }
    }

    ParallelAnimation {
        id: leaving
        NumberAnimation { id: moveX; target: ghost; property: "x"; duration: Theme.makeRoom; easing.type: Easing.OutCubic }
        NumberAnimation { id: moveY; target: ghost; property: "y"; duration: Theme.makeRoom; easing.type: Easing.OutCubic }
        NumberAnimation { target: ghost; property: "scale"; to: 0.25; duration: Theme.makeRoom; easing.type: Easing.InCubic }
        NumberAnimation { target: ghost; property: "opacity"; to: 0; duration: Theme.makeRoom; easing.type: Easing.InCubic }
        onFinished: ghost.visible = false
    }
}
