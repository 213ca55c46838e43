// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The small cross that takes something away.
Item {
    id: button

    // What it does, for who cannot see it.
    required property string text
    signal activated()

    width: Theme.controlHeight
    height: Theme.controlHeight

    activeFocusOnTab: true
    Keys.onReturnPressed: activated()
    Keys.onSpacePressed: activated()

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: activated()

    Rectangle {
        anchors.centerIn: parent
        width: 28
        height: 28
        radius: width / 2
        color: hover.hovered ? Theme.fieldFill : "transparent"
        border.width: button.activeFocus ? 2 : 0
        border.color: Theme.accent
    }
    Image {
        anchors.centerIn: parent
        width: Theme.symbol
        height: Theme.symbol
        sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
        source: Theme.symbolSource("xmark.circle.fill", Theme.textDim)
        opacity: press.pressed ? 0.6 : 1
    }
    HoverHandler {
        id: hover
    }
    TapHandler {
        id: press
        onTapped: button.activated()
    }
}
