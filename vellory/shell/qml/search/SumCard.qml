// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The value of the sum that was typed, on a card across the middle.
Item {
    id: item

    required property SearchCell cell

    signal activated()

    Accessible.role: Accessible.Button
    Accessible.name: cell.title
    Accessible.description: qsTr("Copies the value")
    Accessible.focusable: true
    Accessible.onPressAction: item.activated()

    Rectangle {
        id: card

        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.unit
        width: Math.min(parent.width, 80 * Theme.unit)
        height: parent.height - 3 * Theme.unit
        radius: Theme.highlightRadius
        color: item.cell.highlighted ? Theme.highlightFill : "transparent"
        border.width: 1
        border.color: Theme.highlightBorder

        Text {
            id: typed
            anchors { left: parent.left; leftMargin: 3 * Theme.unit; verticalCenter: parent.verticalCenter }
            width: Math.min(implicitWidth, card.width * 0.4)
            text: item.cell.picture.replace(/[=\s]+$/, "") + " ="
            textFormat: Text.PlainText
            color: Theme.textDim
            font.pixelSize: 17
            elide: Text.ElideMiddle
            maximumLineCount: 1
        }
        Text {
            anchors { left: typed.right; leftMargin: 2 * Theme.unit; right: copies.left; rightMargin: 2 * Theme.unit; verticalCenter: parent.verticalCenter }
            text: item.cell.title
            textFormat: Text.PlainText
            color: Theme.text
            horizontalAlignment: Text.AlignRight
            font.pixelSize: Theme.sumSize
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.bodySize
            elide: Text.ElideRight
        }
        Text {
            id: copies
            anchors { right: parent.right; rightMargin: 3 * Theme.unit; verticalCenter: parent.verticalCenter }
            text: qsTr("↩ copies")
            color: Theme.textDim
            font.pixelSize: Theme.labelSize
            visible: item.cell.highlighted
        }
    }

    TapHandler {
        onTapped: item.activated()
    }
}
