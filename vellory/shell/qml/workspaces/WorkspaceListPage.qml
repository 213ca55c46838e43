// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// All workspaces in their order. Return or a click edits one; Alt and the arrows move it.
FocusScope {
    id: page

    required property Workspaces workspaces
    property string target: "" // the workspace that a dragged app is over

    function takeFocus(): void {
        rows.forceActiveFocus()
    }
    function workspaceAt(at: point): string {
        const inside = mapToItem(rows.contentItem, at)
        const item = rows.contains(mapToItem(rows, at)) ? rows.itemAt(inside.x, inside.y) : null
        return item ? item.key : ""
    }

    EmptyState {
        anchors.centerIn: parent
        visible: rows.count === 0
        title: qsTr("No workspaces yet")
        text: qsTr("Apps, files and links for a task, opened together.")
    }

    ListView {
        id: rows

        readonly property int lineHeight: 56
        property int dropAt: -1
        property int carried: -1

        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: foot.top }
        visible: count > 0
        focus: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        keyNavigationEnabled: false
        highlightMoveDuration: Theme.hover
        model: page.workspaces.rows
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Workspaces")

        Keys.onPressed: event => {
            const step = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0
            const to = Math.max(0, Math.min(count - 1, currentIndex + step))
            event.accepted = true
            if (step !== 0 && event.modifiers & Qt.AltModifier) {
                page.workspaces.move(currentItem.key, to)
                currentIndex = to
            } else if (step !== 0) {
                currentIndex = to
            } else if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                currentIndex = event.key === Qt.Key_Home ? 0 : count - 1
            } else if (!currentItem) {
                event.accepted = false
            } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
                page.workspaces.edit(currentItem.key)
            } else if (event.key === Qt.Key_Delete) {
                page.workspaces.remove(currentItem.key)
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
            rowHeight: rows.lineHeight
        }

        delegate: Item {
            id: line

            required property int index
            required property string key
            required property string name
            required property string symbol
            required property string summary
            required property bool active
            readonly property bool targeted: page.target === key

            width: ListView.view.width
            height: rows.lineHeight
            z: handle.offset !== 0 ? 3 : 1

            Accessible.role: Accessible.ListItem
            Accessible.name: name
            Accessible.description: active ? qsTr("Open") + ", " + summary : summary
            Accessible.onPressAction: page.workspaces.edit(key)

            Rectangle {
                anchors { fill: parent; topMargin: 1; bottomMargin: 1 }
                transform: Translate { y: handle.offset }
                radius: 12
                color: handle.offset !== 0 ? Theme.menuFill : line.targeted ? Theme.selectionFill : hover.hovered ? Theme.menuHover : "transparent"
                border.width: line.ListView.isCurrentItem && rows.activeFocus || line.targeted ? 2 : handle.offset !== 0 ? 1 : 0
                border.color: handle.offset !== 0 ? Theme.panelBorder : Theme.accent

                HoverHandler { id: hover }
                TapHandler {
                    gesturePolicy: TapHandler.ReleaseWithinBounds
                    onTapped: page.workspaces.edit(line.key)
                }
                ReorderHandle {
                    id: handle
                    anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
                    entry: line
                    view: rows
                    at: line.index
                    onOffsetChanged: rows.carried = line.index
                    onMoved: to => page.workspaces.move(line.key, to)
                }
                Rectangle {
                    id: face
                    anchors { left: handle.right; leftMargin: 6; verticalCenter: parent.verticalCenter }
                    width: 36
                    height: 36
                    radius: 10
                    color: line.active ? Theme.accent : Theme.fieldFill
                    Image {
                        anchors.centerIn: parent
                        width: 20
                        height: 20
                        sourceSize: Qt.size(40, 40)
                        source: Theme.symbolSource(line.symbol, line.active ? Theme.accentInk : Theme.text)
                    }
                }
                Column {
                    anchors { left: face.right; leftMargin: 12; right: buttons.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    spacing: 1
                    Text {
                        width: parent.width
                        text: line.name
                        textFormat: Text.PlainText
                        elide: Text.ElideRight
                        maximumLineCount: 1
                        color: Theme.text
                        font { pixelSize: Theme.bodySize; weight: Font.Medium }
                    }
                    Text {
                        width: parent.width
                        text: line.summary
                        textFormat: Text.PlainText
                        elide: Text.ElideRight
                        maximumLineCount: 1
                        color: Theme.textDim
                        font.pixelSize: Theme.hintSize + 1
                    }
                }
                Row {
                    id: buttons
                    anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    SymbolButton {
                        visible: hover.hovered
                        symbol: "square.on.square"
                        name: qsTr("Duplicate %1").arg(line.name)
                        activeFocusOnTab: false
                        onActivated: page.workspaces.duplicate(line.key)
                    }
                    SymbolButton {
                        visible: hover.hovered
                        symbol: "trash"
                        name: qsTr("Delete %1").arg(line.name)
                        activeFocusOnTab: false
                        onActivated: page.workspaces.remove(line.key)
                    }
                    Image {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 18
                        height: 14
                        visible: !hover.hovered
                        fillMode: Image.PreserveAspectFit
                        mirror: LayoutMirroring.enabled
                        sourceSize: Qt.size(28, 28)
                        source: Theme.symbolSource("chevron.right", Theme.textDim)
                    }
                }
            }
        }
    }

    Flow {
        id: foot

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        spacing: Theme.unit
        topPadding: 2 * Theme.unit

        PanelButton {
            text: qsTr("New workspace")
            primary: true
            onActivated: page.workspaces.create()
        }
        PanelButton {
            text: qsTr("From what's open…")
            Accessible.name: page.workspaces.newFromOpenText
            onActivated: page.workspaces.chooseFromOpen()
        }
    }
}
