// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The open menu, over everything: the first column at `origin`, a submenu beside the entry that it
// belongs to. Arrows, Return, Escape and first letters work as in any menu.
FocusScope {
    id: menu

    required property Launcher launcher
    property point origin
    // Each open column: its entries and where it stands; and the index of the one chosen in each.
    property var columns: []
    property var chosen: []
    // A menu that opens under a resting pointer chooses nothing: only movement does.
    property var lastPointer: null

    readonly property bool open: launcher.menu.open

    signal closed()

    function heightOf(entries: var): real {
        let height = 2 * Theme.unit
        for (const entry of entries)
            height += entry.kind === "separator" ? Theme.unit + 1 : Theme.menuItemHeight
        return height
    }
    function offsetOf(entries: var, index: int): real {
        return heightOf(entries.slice(0, index)) - Theme.unit
    }
    function column(entries: var, x: real, y: real): var {
        const height = Math.min(heightOf(entries), menu.height - 2 * Theme.unit)
        return {
            entries: entries, height: height,
            x: Math.max(Theme.unit, Math.min(x, menu.width - Theme.menuWidth - Theme.unit)),
            y: Math.max(Theme.unit, Math.min(y, menu.height - height - Theme.unit))
        }
    }
    // Chooses in a column and closes those that hang on it.
    function choose(level: int, index: int): void {
        if (columns.length > level + 1)
            columns = columns.slice(0, level + 1)
        chosen = chosen.slice(0, level).concat([index])
    }
    function openSubmenu(level: int, index: int, byKeys: bool): void {
        choose(level, index)
        const parent = columns[level]
        const entries = parent.entries[index].entries
        const leftwards = launcher.mirrored || parent.x + 2 * Theme.menuWidth > menu.width
        const x = leftwards ? parent.x - Theme.menuWidth + 6 : parent.x + Theme.menuWidth - 6
        chosen = chosen.concat([-1])
        columns = columns.concat([column(entries, x, parent.y + offsetOf(parent.entries, index) - Theme.unit)])
        if (byKeys)
            stepBy(1)
    }
    function pointed(level: int, index: int, at: point): void {
        const moved = lastPointer !== null && (lastPointer.x !== at.x || lastPointer.y !== at.y)
        lastPointer = at
        if (!moved || chosen[level] === index)
            return
        if (columns[level].entries[index].kind === "submenu")
            openSubmenu(level, index, false)
        else
            choose(level, index)
    }
    function act(level: int, index: int): void {
        const entry = columns[level].entries[index]
        if (entry.kind === "submenu")
            openSubmenu(level, index, true)
        else if (entry.kind === "action")
            launcher.menu.trigger(chosen.slice(0, level).concat([index]))
    }
    // To the next entry that can be chosen.
    function stepBy(direction: int): void {
        const level = columns.length - 1
        const entries = columns[level].entries
        let index = chosen[level]
        if (index < 0 && direction < 0)
            index = entries.length
        for (let tries = 0; tries < entries.length; ++tries) {
            index = (index + direction + entries.length) % entries.length
            if (entries[index].kind !== "separator") {
                choose(level, index)
                return
            }
        }
    }
    function jumpTo(letter: string): void {
        const level = columns.length - 1
        const entries = columns[level].entries
        for (let step = 1; step <= entries.length; ++step) {
            const index = (chosen[level] + step + entries.length) % entries.length
            if (entries[index].text.toLowerCase().startsWith(letter)) {
                choose(level, index)
                return
            }
        }
    }

    visible: open
    onOpenChanged: {
        if (open) {
            const entries = launcher.menu.entries
            const x = launcher.mirrored ? origin.x - Theme.menuWidth : origin.x
            lastPointer = null
            chosen = [-1]
            columns = [column(entries, x, origin.y)]
            forceActiveFocus()
        } else {
            columns = []
            closed()
        }
    }

    Keys.onPressed: event => {
        if (!open)
            return
        const level = columns.length - 1
        const current = chosen[level]
        const onwards = launcher.mirrored ? Qt.Key_Left : Qt.Key_Right
        const backwards = launcher.mirrored ? Qt.Key_Right : Qt.Key_Left
        event.accepted = true
        if (event.key === Qt.Key_Escape || event.key === backwards) {
            if (level > 0)
                choose(level - 1, chosen[level - 1])
            else if (event.key === Qt.Key_Escape)
                launcher.menu.close()
        } else if (event.key === Qt.Key_Down || event.key === Qt.Key_Tab) {
            stepBy(1)
        } else if (event.key === Qt.Key_Up || event.key === Qt.Key_Backtab) {
            stepBy(-1)
        } else if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            choose(level, event.key === Qt.Key_Home ? -1 : columns[level].entries.length)
            stepBy(event.key === Qt.Key_Home ? 1 : -1)
        } else if (current >= 0 && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)) {
            act(level, current)
        } else if (current >= 0 && event.key === onwards && columns[level].entries[current].kind === "submenu") {
            openSubmenu(level, current, true)
        } else if (event.text.trim() !== "") {
            jumpTo(event.text.toLowerCase())
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: menu.launcher.menu.close()
        onWheel: wheel => wheel.accepted = true
        Accessible.ignored: true
    }

    Repeater {
        model: menu.columns.length

        Item {
            id: sheet

            required property int index
            readonly property var column: menu.columns[index] ?? ({ entries: [], x: 0, y: 0, height: 0 })

            readonly property int current: menu.chosen[index] ?? -1

            x: column.x
            y: column.y
            width: Theme.menuWidth
            height: column.height

            Accessible.role: Accessible.PopupMenu
            Accessible.name: qsTr("Menu")

            BorderImage {
                anchors.fill: parent
                anchors.margins: -24
                anchors.topMargin: -14
                anchors.bottomMargin: -32
                source: "image://shadow/24/35"
                border { left: 48; right: 48; top: 48; bottom: 48 }
            }
            Rectangle {
                anchors.fill: parent
                radius: 12
                color: Theme.menuFill
                border { width: 1; color: Theme.panelBorder }
            }
            MouseArea {
                anchors.fill: parent
                acceptedButtons: Qt.AllButtons
                Accessible.ignored: true
            }

            Flickable {
                anchors { fill: parent; margins: Theme.unit - 2; topMargin: Theme.unit; bottomMargin: Theme.unit }
                contentHeight: lines.height
                clip: contentHeight > height
                interactive: contentHeight > height
                boundsBehavior: Flickable.StopAtBounds
                contentY: Math.max(0, Math.min(contentHeight - height,
                                               menu.offsetOf(sheet.column.entries, Math.max(0, sheet.current)) - height / 2))

                Column {
                    id: lines
                    width: parent.width

                    Repeater {
                        model: sheet.column.entries

                        MenuLine {
                            required property int index
                            required property var modelData

                            width: lines.width
                            entry: modelData
                            chosen: index === sheet.current
                            onPointed: at => menu.pointed(sheet.index, index, at)
                            onActivated: menu.act(sheet.index, index)
                        }
                    }
                }
            }
        }
    }
}
