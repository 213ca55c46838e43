// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// What a row of a list is grasped by to take it to another place. The list's `dropAt` says
// meanwhile where it would go, and the row follows the pointer by `offset`.
Item {
    id: handle

    required property Item entry
    required property ListView view
    required property int at
    readonly property real offset: area.pressed ? area.offset : 0

    signal moved(int to)

    width: 20
    height: Theme.controlHeight
    opacity: hover.hovered || area.pressed ? 1 : 0.55
    Accessible.ignored: true // by keys: Alt and the arrows

    Image {
        anchors.centerIn: parent
        width: 16
        height: 16
        sourceSize: Qt.size(32, 32)
        source: Theme.symbolSource("line.3.horizontal", Theme.textDim)
    }
    HoverHandler {
        id: hover
        cursorShape: Qt.OpenHandCursor
    }
    MouseArea {
        id: area

        property real start: 0
        property real offset: 0
        readonly property int place: Math.max(0, Math.min(handle.view.count - 1,
                                                          Math.round((handle.entry.y + offset) / Math.max(1, handle.entry.height))))

        anchors { fill: parent; margins: -4 }
        preventStealing: true
        onPressed: mouse => {
            start = mapToItem(handle.view, mouse.x, mouse.y).y
            offset = 0
            handle.view.dropAt = handle.at
        }
        onPositionChanged: mouse => {
            offset = mapToItem(handle.view, mouse.x, mouse.y).y - start
            handle.view.dropAt = place
        }
        onReleased: {
            const to = place
            handle.view.dropAt = -1
            offset = 0
            if (to !== handle.at)
                handle.moved(to)
        }
        onCanceled: {
            handle.view.dropAt = -1
            offset = 0
        }
        Accessible.ignored: true
    }
}
