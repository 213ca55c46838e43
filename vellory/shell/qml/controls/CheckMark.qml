// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A box to tick, with its text; space or Return ticks it too.
Item {
    id: box

    required property string text
    // Said to who cannot see what the text refers to.
    property string detail: ""
    property bool checked: false
    signal toggled()

    width: mark.width + label.anchors.leftMargin + label.implicitWidth
    height: Theme.controlHeight

    activeFocusOnTab: true
    Keys.onReturnPressed: toggled()
    Keys.onSpacePressed: toggled()

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.description: detail
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: true
    Accessible.onToggleAction: toggled()
    Accessible.onPressAction: toggled()

    Rectangle {
        id: mark
        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
        width: Theme.symbol
        height: Theme.symbol
        radius: 5
        color: box.checked ? Theme.accent : Theme.fieldFill
        border.width: box.activeFocus ? 2 : 1
        border.color: box.activeFocus ? Theme.accent : Theme.controlBorder

        Image {
            anchors.centerIn: parent
            visible: box.checked
            width: 12
            height: 12
            sourceSize: Qt.size(24, 24)
            source: Theme.symbolSource("checkmark", Theme.accentInk)
        }
    }
    Text {
        id: label
        anchors { left: mark.right; leftMargin: Theme.unit; verticalCenter: parent.verticalCenter }
        text: box.text
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: Theme.bodySize
    }
    TapHandler {
        onTapped: box.toggled()
    }
}
