// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A small round button that shows a symbol.
Rectangle {
    id: button

    required property string symbol
    required property string name // for assistive technology
    signal activated()

    width: Theme.controlHeight
    height: Theme.controlHeight
    radius: height / 2
    color: hover.hovered || activeFocus ? Theme.menuHover : "transparent"
    border { width: activeFocus ? 2 : 0; color: Theme.accent }
    opacity: press.pressed ? 0.6 : 1
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onPressAction: activated()
    Keys.onReturnPressed: activated()
    Keys.onSpacePressed: activated()

    Image {
        anchors.centerIn: parent
        width: Theme.symbol
        height: Theme.symbol
        sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
        source: Theme.symbolSource(button.symbol, Theme.textDim)
    }
    HoverHandler { id: hover }
    TapHandler {
        id: press
        onTapped: button.activated()
    }
}
