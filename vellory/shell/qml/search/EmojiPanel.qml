// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Picks the emoji that a folder wears as its badge: typed for by name, chosen by arrows or pointer.
Panel {
    id: panel

    required property Launcher launcher

    title: qsTr("Folder emoji")
    cardWidth: 480
    cardHeight: 440
    onClosed: launcher.closePanel()
    onVisibleChanged: {
        if (visible) {
            query.text = ""
            query.forceActiveFocus()
        }
    }

    Rectangle {
        id: field

        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: Theme.controlHeight + 4
        radius: height / 2
        color: Theme.fieldFill
        border { width: query.activeFocus ? 2 : 1; color: query.activeFocus ? Theme.accent : Theme.fieldBorder }

        TextInput {
            id: query
            anchors { fill: parent; leftMargin: 14; rightMargin: 14 }
            verticalAlignment: TextInput.AlignVCenter
            clip: true
            color: Theme.text
            font.pixelSize: Theme.bodySize
            maximumLength: 100
            Accessible.role: Accessible.EditableText
            Accessible.name: qsTr("Emoji name")
            onTextChanged: grid.currentIndex = 0
            Keys.onUpPressed: grid.moveCurrentIndexUp()
            Keys.onDownPressed: grid.moveCurrentIndexDown()
            Keys.onLeftPressed: grid.moveCurrentIndexLeft()
            Keys.onRightPressed: grid.moveCurrentIndexRight()
            Keys.onReturnPressed: panel.choose(grid.currentIndex)
            Keys.onEnterPressed: panel.choose(grid.currentIndex)
            Keys.onEscapePressed: panel.closed()

            Text {
                anchors.fill: parent
                verticalAlignment: Text.AlignVCenter
                visible: query.text === "" && query.preeditText === ""
                text: qsTr("Type a name, such as “rocket”")
                color: Theme.textDim
                font: query.font
            }
        }
    }

    function choose(index: int): void {
        if (index >= 0 && index < grid.count)
            launcher.setEmoji(grid.model[index].emoji)
    }

    GridView {
        id: grid

        readonly property int perRow: Math.max(1, Math.floor(width / 48))

        anchors { left: parent.left; right: parent.right; top: field.bottom; bottom: parent.bottom; topMargin: 2 * Theme.unit }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        cellWidth: Math.floor(width / perRow)
        cellHeight: 48
        model: panel.visible ? panel.launcher.findEmoji(query.text) : []
        Accessible.role: Accessible.List
        Accessible.name: panel.title

        delegate: Rectangle {
            id: cell

            required property int index
            required property var modelData

            width: GridView.view.cellWidth
            height: GridView.view.cellHeight
            radius: 10
            color: GridView.isCurrentItem ? Theme.accent : hover.hovered ? Theme.menuHover : "transparent"
            Accessible.role: Accessible.ListItem
            Accessible.name: modelData.name

            Text {
                anchors.centerIn: parent
                text: cell.modelData.emoji
                textFormat: Text.PlainText
                font { pixelSize: 26; family: Theme.emojiFamily }
            }
            HoverHandler { id: hover }
            TapHandler { onTapped: panel.choose(cell.index) }
        }
    }
    EmptyState {
        anchors.centerIn: grid
        visible: grid.count === 0
        title: qsTr("No such emoji")
        text: qsTr("Try another word for it.")
    }
}
