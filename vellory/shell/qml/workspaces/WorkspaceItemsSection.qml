// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// What the workspace opens: apps, files and links in their order. Apps come by being dragged here
// from the grid or by being searched for.
EditorSection {
    id: section

    required property WorkspaceEditor editor
    // "", "app" or "link": what is being added.
    property string adding: ""

    signal filesRequested(bool folders)

    title: qsTr("Opens")

    onVisibleChanged: adding = ""
    Connections {
        target: section.editor
        function onWorkspaceChanged() { section.adding = "" }
    }

    HintText {
        width: parent.width
        visible: rows.count === 0
        text: qsTr("Nothing yet. Drag apps here from the grid, or add them below.")
    }

    ListView {
        id: rows

        property int dropAt: -1
        property int carried: -1

        width: parent.width
        height: Math.min(contentHeight, 6.5 * Theme.rowHeight)
        visible: count > 0
        clip: interactive
        interactive: contentHeight > height + 1
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        keyNavigationEnabled: false
        highlightMoveDuration: Theme.hover
        model: section.editor.items
        Accessible.role: Accessible.List
        Accessible.name: section.title

        Keys.onPressed: event => {
            const step = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0
            const to = Math.max(0, Math.min(count - 1, currentIndex + step))
            event.accepted = true
            if (step !== 0 && event.modifiers & Qt.AltModifier) {
                section.editor.moveItem(currentIndex, to)
                currentIndex = to
            } else if (step !== 0) {
                currentIndex = to
            } else if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                currentIndex = event.key === Qt.Key_Home ? 0 : count - 1
            } else if (event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace) {
                section.editor.removeItem(currentIndex)
            } else {
                event.accepted = false
            }
        }
        displaced: Transition { NumberAnimation { property: "y"; duration: Theme.makeRoom; easing.type: Easing.OutCubic } }
        move: Transition { NumberAnimation { property: "y"; duration: Theme.makeRoom; easing.type: Easing.OutCubic } }

        DropLine {
            view: rows
            from: rows.carried
            dropAt: rows.dropAt
            rowHeight: Theme.rowHeight
        }

        delegate: Item {
            id: line

            required property int index
            required property string title
            required property string detail
            required property string icon
            required property string symbol

            width: ListView.view.width
            height: Theme.rowHeight
            z: handle.offset !== 0 ? 3 : 1

            Accessible.role: Accessible.ListItem
            Accessible.name: title
            Accessible.description: detail

            Rectangle {
                anchors { fill: parent; topMargin: 1; bottomMargin: 1 }
                transform: Translate { y: handle.offset }
                radius: 10
                color: handle.offset !== 0 ? Theme.menuFill : hover.hovered ? Theme.menuHover : "transparent"
                border.width: line.ListView.isCurrentItem && rows.activeFocus ? 2 : handle.offset !== 0 ? 1 : 0
                border.color: handle.offset !== 0 ? Theme.panelBorder : Theme.accent

                HoverHandler { id: hover }
                ReorderHandle {
                    id: handle
                    anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
                    entry: line
                    view: rows
                    at: line.index
                    onOffsetChanged: rows.carried = line.index
                    onMoved: to => section.editor.moveItem(line.index, to)
                }
                AppIcon {
                    id: face
                    anchors { left: handle.right; leftMargin: 6; verticalCenter: parent.verticalCenter }
                    width: 28
                    height: 28
                    size: 28
                    source: line.icon
                }
                Image {
                    anchors.centerIn: face
                    width: Theme.symbol
                    height: Theme.symbol
                    visible: line.symbol !== ""
                    sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
                    source: line.symbol === "" ? "" : Theme.symbolSource(line.symbol, Theme.text)
                }
                Column {
                    anchors { left: face.right; leftMargin: 10; right: remove.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    Text {
                        width: parent.width
                        text: line.title
                        textFormat: Text.PlainText
                        elide: Text.ElideMiddle
                        maximumLineCount: 1
                        color: Theme.text
                        font.pixelSize: Theme.bodySize
                    }
                    Text {
                        width: parent.width
                        visible: text !== ""
                        text: line.detail
                        textFormat: Text.PlainText
                        elide: Text.ElideMiddle
                        maximumLineCount: 1
                        color: Theme.textDim
                        font.pixelSize: Theme.hintSize + 1
                    }
                }
                SymbolButton {
                    id: remove
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                    symbol: "xmark.circle.fill"
                    name: qsTr("Remove %1").arg(line.title)
                    activeFocusOnTab: false
                    onActivated: section.editor.removeItem(line.index)
                }
            }
        }
    }

    Flow {
        width: parent.width
        visible: section.adding === ""
        spacing: 0

        TextLink {
            text: qsTr("App…")
            symbol: "plus"
            onActivated: section.adding = "app"
        }
        TextLink {
            text: qsTr("File…")
            symbol: "doc.badge.plus"
            onActivated: section.filesRequested(false)
        }
        TextLink {
            text: qsTr("Folder…")
            symbol: "folder.badge.plus"
            onActivated: section.filesRequested(true)
        }
        TextLink {
            text: qsTr("Link…")
            symbol: "link"
            onActivated: section.adding = "link"
        }
    }
    Loader {
        width: parent.width
        active: section.adding === "app"
        visible: active
        sourceComponent: AppFinder {
            source: section.editor
            onClosed: section.adding = ""
        }
    }
    Loader {
        width: parent.width
        active: section.adding === "link"
        visible: active
        sourceComponent: LinkField {
            editor: section.editor
            onClosed: section.adding = ""
        }
    }
}
