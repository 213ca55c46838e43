// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// Drags over the whole launcher: a tile that the pointer carries, a band that selects, pages or a
// list that follow the finger. What it draws lies above everything; a drag goes on when the folder that it
// began in closes below it.
Item {
    id: gestures

    required property Launcher launcher
    required property TileGrid grid
    required property FolderPanel folderPanel
    required property Spring pageSpring
    // What may be dragged now; off while a menu or panel stands over the grid.
    property bool ready: true
    // The workspace under a point that would take a dragged tile in, "" for none; and whether a
    // point is on something else than the grid. Set by who knows what lies there.
    property var targetAt: at => ""
    property var elsewhere: at => false
    // The workspace that the dragged tile is over.
    property string workspaceTarget: ""

    signal droppedOnWorkspace(string tileId, string workspace)

    readonly property DraggedTile drag: launcher.drag
    property string mode: ""
    property point bandStart
    property point pointer

    function tileBelow(at: point): string {
        if (launcher.openFolder !== "")
            return folderPanel.tileGrid.tileAt(folderPanel.tileGrid.mapFromItem(gestures, at))
        return grid.tileAt(grid.mapFromItem(gestures, at))
    }

    function begin(at: point, delta: point, modifiers): void {
        mode = ""
        pointer = at
        if (launcher.searching)
            return
        const id = tileBelow(at)
        if (id !== "") {
            const source = launcher.openFolder !== "" ? folderPanel.tileGrid : grid
            const tile = source.itemFor(id)
            if (tile && drag.begin(id)) {
                ghost.show(tile, at)
                mode = "tile"
            }
            return
        }
        if (launcher.openFolder !== "")
            return
        if (launcher.dragsPages(delta, modifiers)) {
            mode = "page"
            return
        }
        bandStart = at
        launcher.beginBand(modifiers)
        mode = "band"
    }

    function move(at: point, travelled: point): void {
        pointer = at
        if (mode === "page")
            pageSpring.hold(launcher.draggedPosition(travelled))
        else if (mode === "band")
            launcher.selectInBand(grid.tilesIn(grid.mapFromItem(gestures, band.area)))
        else if (mode === "tile")
            hover()
    }

    function end(travelled: point, velocity: point): void {
        if (mode === "page") {
            const speed = launcher.letGo(travelled, velocity)
            pageSpring.release(launcher.position, speed)
        } else if (mode === "tile" && drag.active) {
            dropTile()
        }
        finish()
    }

    // Nothing is carried any more, and nothing waits to happen to it.
    function finish(): void {
        mode = ""
        workspaceTarget = ""
        leaving.stop()
        atEdge.turn = 0
    }

    function cancel(): void {
        if (mode === "page")
            pageSpring.release(launcher.position, 0)
        if (mode === "tile")
            drag.cancel()
        finish()
    }

    function hover(): void {
        ghost.follow(pointer)
        workspaceTarget = targetAt(pointer)
        if (workspaceTarget !== "" || elsewhere(pointer)) {
            leaving.stop()
            atEdge.turn = 0
            drag.hoverElsewhere()
            return
        }
        if (drag.inFolder) {
            const inside = folderPanel.holds(pointer)
            if (inside) {
                leaving.stop()
                const place = folderPanel.tileGrid.placeAt(folderPanel.tileGrid.mapFromItem(gestures, pointer))
                drag.hover(place.cell, place.across)
            } else if (!leaving.running) {
                leaving.restart()
            }
            return
        }
        const onGrid = grid.mapFromItem(gestures, pointer)
        atEdge.turn = launcher.turnAt(onGrid)
        if (pageSpring.running)
            return
        const place = grid.placeAt(onGrid)
        drag.hover(place.cell, place.across)
    }

    function dropTile(): void {
        const id = drag.tileId
        if (workspaceTarget !== "" || elsewhere(pointer)) {
            const workspace = workspaceTarget
            const at = pointer
            drag.cancel()
            if (workspace !== "") {
                ghost.vanishInto(at)
                droppedOnWorkspace(id, workspace)
            }
            return
        }
        const into = drag.target !== ""
        const left = drag.inFolder && !folderPanel.holds(pointer)
        if (left)
            drag.leaveFolder()
        const source = drag.inFolder ? folderPanel.tileGrid : grid
        const target = into ? source.mapToItem(gestures, source.tileRect(drag.target)) : Qt.rect(0, 0, 0, 0)
        const from = source.mapFromItem(gestures, ghost.tileTopLeft)
        drag.drop()
        if (into)
            ghost.vanishInto(Qt.point(target.x + target.width / 2, target.y + target.height / 2))
        else
            source.bringFrom(id, from)
    }

    DragHandler {
        id: mouseDrag

        // Of the view below everything: what lies above sees presses first and clicks pass through.
        parent: gestures.parent
        enabled: gestures.ready
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        acceptedButtons: Qt.LeftButton
        target: null
        dragThreshold: 8
        property point velocity
        onActiveChanged: {
            if (active)
                gestures.begin(centroid.pressPosition,
                               Qt.point(centroid.position.x - centroid.pressPosition.x,
                                        centroid.position.y - centroid.pressPosition.y),
                               centroid.modifiers)
            else
                gestures.end(Qt.point(translation.x, translation.y), velocity)
        }
        onTranslationChanged: {
            if (!active)
                return
            velocity = Qt.point(centroid.velocity.x, centroid.velocity.y)
            gestures.move(centroid.position, Qt.point(translation.x, translation.y))
        }
        onCanceled: gestures.cancel()
    }

    DragHandler {
        id: touchDrag

        parent: gestures.parent
        enabled: gestures.ready && gestures.launcher.openFolder === ""
                 && (gestures.launcher.list || gestures.launcher.pageCount > 1) && !gestures.launcher.searching
        acceptedDevices: PointerDevice.TouchScreen
        target: null
        xAxis.enabled: !gestures.launcher.list
        yAxis.enabled: gestures.launcher.list
        property point velocity
        onActiveChanged: {
            if (active)
                gestures.mode = "page"
            else
                gestures.end(Qt.point(translation.x, translation.y), velocity)
        }
        onTranslationChanged: {
            if (!active)
                return
            velocity = Qt.point(centroid.velocity.x, centroid.velocity.y)
            gestures.move(centroid.position, Qt.point(translation.x, translation.y))
        }
    }

    Timer {
        id: leaving
        interval: Theme.folderLeave
        onTriggered: {
            gestures.drag.leaveFolder()
            gestures.hover()
        }
    }
    Timer {
        id: atEdge
        // How many pages on or back the carried tile asks for.
        property int turn: 0

        interval: Theme.edgeDwell
        repeat: true
        running: turn !== 0
        onTriggered: gestures.launcher.step(turn)
    }
    Connections {
        target: gestures.pageSpring
        function onRunningChanged() {
            if (!gestures.pageSpring.running && gestures.mode === "tile" && gestures.drag.active)
                gestures.hover()
        }
    }
    Connections {
        target: gestures.drag
        // Ended by Escape, or because its app is gone.
        function onActiveChanged() {
            if (!gestures.drag.active) {
                gestures.finish()
                ghost.hide()
            }
        }
    }

    Rectangle {
        id: band

        readonly property rect area: Qt.rect(Math.min(gestures.bandStart.x, gestures.pointer.x),
                                             Math.min(gestures.bandStart.y, gestures.pointer.y),
                                             Math.abs(gestures.bandStart.x - gestures.pointer.x),
                                             Math.abs(gestures.bandStart.y - gestures.pointer.y))
        visible: gestures.mode === "band"
        x: area.x
        y: area.y
        width: area.width
        height: area.height
        radius: 4
        color: Theme.bandFill
        border { width: 1; color: Theme.accent }
    }

    DragGhost {
        id: ghost
    }
}
