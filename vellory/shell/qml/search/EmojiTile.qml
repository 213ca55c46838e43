// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// An emoji among the search results, with its name.
Item {
    id: tile

    required property SearchCell cell

    signal activated()

    Accessible.role: Accessible.Button
    Accessible.name: cell.title
    Accessible.focusable: true
    Accessible.onPressAction: tile.activated()

    Rectangle {
        anchors { fill: parent; leftMargin: Theme.unit; rightMargin: Theme.unit; topMargin: 2; bottomMargin: 2 }
        radius: Theme.highlightRadius
        color: Theme.highlightFill
        border.width: 1
        border.color: Theme.highlightBorder
        visible: tile.cell.highlighted
    }
    Text {
        id: picture
        anchors.horizontalCenter: parent.horizontalCenter
        // In the middle of what the name leaves; the emoji font is taller than its size.
        y: Math.round((parent.height - 2.5 * Theme.unit - height) / 2)
        text: tile.cell.picture
        textFormat: Text.PlainText
        color: Theme.text
        font { family: Theme.emojiFamily; pixelSize: Theme.emojiSize }
        renderType: Text.QtRendering
        scale: press.pressed ? 0.92 : hover.hovered ? 1.08 : 1
        Behavior on scale { NumberAnimation { duration: Theme.hover; easing.type: Easing.OutCubic } }
    }
    Text {
        anchors { bottom: parent.bottom; bottomMargin: 1.5 * Theme.unit; horizontalCenter: parent.horizontalCenter }
        width: tile.width - 3 * Theme.unit
        text: tile.cell.title
        textFormat: Text.PlainText
        color: Theme.textDim
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: Theme.labelSize - 1
        elide: Text.ElideRight
        renderType: Text.QtRendering
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        id: press
        onTapped: tile.activated()
    }
}
