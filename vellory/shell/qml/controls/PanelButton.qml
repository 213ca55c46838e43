// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A push button on a panel.
Rectangle {
    id: button

    required property string text
    property bool primary: false
    signal activated()

    implicitWidth: label.implicitWidth + 4 * Theme.unit
    width: implicitWidth
    height: Theme.controlHeight
    radius: height / 2
    color: primary ? Theme.accent : Theme.fieldFill
    border.width: activeFocus ? 2 : primary ? 0 : 1
    border.color: activeFocus ? (primary ? Theme.text : Theme.accent) : Theme.fieldBorder
    opacity: !enabled ? 0.4 : press.pressed ? 0.7 : 1
    activeFocusOnTab: true
    Keys.onReturnPressed: activated()
    Keys.onEnterPressed: activated()
    Keys.onSpacePressed: activated()
    scale: press.pressed ? 0.97 : 1

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: activated()

    Text {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, button.width - 2 * Theme.unit)
        text: button.text
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        color: button.primary ? Theme.accentInk : Theme.text
        font { pixelSize: Theme.bodySize; weight: Font.Medium }
    }
    TapHandler {
        id: press
        onTapped: button.activated()
    }
}
