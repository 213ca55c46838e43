// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The workspaces in a row under the search field, and behind them what makes a new one. Left and
// right move along it, Return opens, the menu key shows what else can be done. Takes no room while
// there are none.
FocusScope {
    id: strip

    required property Workspaces workspaces
    property string target: "" // the workspace that a dragged app is over

    readonly property bool shown: workspaces.rows.count > 0

    // Shows a menu of a workspace, or of the "+" for "", at a point of the scene.
    signal menuRequested(string workspace, point at)
    signal done()

    // The workspace at a point of this item; empty for none.
    function workspaceAt(at: point): string {
        if (!shown || !contains(at))
            return ""
        const inside = mapToItem(list.contentItem, at)
        const item = list.itemAt(inside.x, inside.y)
        return item ? item.key : ""
    }
    function menuOfCurrent(): void {
        const item = list.currentItem
        if (add.current || !item)
            menuRequested("", add.mapToItem(null, 0, add.height + 4))
        else
            menuRequested(item.key, item.mapToItem(null, 0, item.height + 4))
    }

    height: shown ? Theme.chipHeight : 0
    visible: shown
    activeFocusOnTab: shown

    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("Workspaces")

    Keys.onPressed: event => {
        const onwards = LayoutMirroring.enabled ? Qt.Key_Left : Qt.Key_Right
        const backwards = LayoutMirroring.enabled ? Qt.Key_Right : Qt.Key_Left
        event.accepted = true
        if (event.key === onwards || event.key === backwards) {
            const step = event.key === onwards ? 1 : -1
            const at = (add.current ? list.count : list.currentIndex) + step
            add.current = at >= list.count
            list.currentIndex = Math.max(0, Math.min(at, list.count - 1))
        } else if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            add.current = event.key === Qt.Key_End
            list.currentIndex = event.key === Qt.Key_Home ? 0 : list.count - 1
        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space) {
            if (add.current)
                menuOfCurrent()
            else if (list.currentItem)
                workspaces.open(list.currentItem.key)
        } else if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)) {
            menuOfCurrent()
        } else if (event.key === Qt.Key_Delete && list.currentItem && list.currentItem.active) {
            workspaces.close()
        } else if (event.key === Qt.Key_Escape || event.key === Qt.Key_Up || event.key === Qt.Key_Down) {
            done()
        } else {
            event.accepted = false
        }
    }

    ListView {
        id: list

        // In the middle as long as all have room, else from edge to edge.
        readonly property real room: strip.width - add.width - Theme.unit

        width: Math.min(contentWidth, room)
        height: parent.height
        x: strip.LayoutMirroring.enabled ? strip.width - start - width : start
        readonly property real start: Math.max(0, (strip.width - width - Theme.unit - add.width) / 2)

        clip: contentWidth > width
        focus: true
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentWidth > width
        spacing: Theme.unit
        keyNavigationEnabled: false
        highlightMoveDuration: Theme.makeRoom
        cacheBuffer: 400
        model: strip.workspaces.rows

        delegate: WorkspaceChip {
            required property string key
            required property int index

            current: strip.activeFocus && !add.current && ListView.isCurrentItem
            targeted: strip.target === key
            onOpened: strip.workspaces.open(key)
            onClosed: strip.workspaces.close()
            onMenuRequested: at => strip.menuRequested(key, at)
        }
        displaced: Transition { NumberAnimation { property: "x"; duration: Theme.makeRoom; easing.type: Easing.OutCubic } }
        move: Transition { NumberAnimation { property: "x"; duration: Theme.makeRoom; easing.type: Easing.OutCubic } }

        // Turns of the wheel move along the row instead of turning pages.
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.NoButton
            enabled: list.interactive
            onWheel: wheel => {
                const turn = Math.abs(wheel.angleDelta.x) > Math.abs(wheel.angleDelta.y) ? wheel.angleDelta.x : wheel.angleDelta.y
                const least = list.originX
                list.contentX = Math.max(least, Math.min(least + list.contentWidth - list.width,
                                                         list.contentX - turn * (strip.LayoutMirroring.enabled ? -1 : 1)))
            }
            Accessible.ignored: true
        }
    }

    Rectangle {
        id: add

        property bool current: false

        x: strip.LayoutMirroring.enabled ? list.x - Theme.unit - width : list.x + list.width + Theme.unit
        width: Theme.chipHeight
        height: Theme.chipHeight
        radius: height / 2
        color: addHover.hovered ? Theme.chipHover : Theme.fieldFill
        border.width: current && strip.activeFocus ? 2 : 1
        border.color: current && strip.activeFocus ? Theme.accent : Theme.fieldBorder

        Accessible.role: Accessible.Button
        Accessible.name: qsTr("New workspace")
        Accessible.focusable: true
        Accessible.onPressAction: strip.menuRequested("", mapToItem(null, 0, height + 4))

        Image {
            anchors.centerIn: parent
            width: 16
            height: 16
            sourceSize: Qt.size(32, 32)
            source: Theme.symbolSource("plus", Theme.text)
        }
        HoverHandler { id: addHover }
        TapHandler {
            onTapped: strip.menuRequested("", add.mapToItem(null, 0, add.height + 4))
        }
    }
}
