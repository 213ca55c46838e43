// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A quiet button: a symbol and a few words, without a frame until it is pointed at.
Rectangle {
    id: button

    required property string text
    property string symbol: ""
    property color ink: Theme.text
    signal activated()

    width: content.implicitWidth + 2 * Theme.unit + 4
    height: Theme.controlHeight
    radius: 10
    color: hover.hovered ? Theme.menuHover : "transparent"
    border { width: activeFocus ? 2 : 0; color: Theme.accent }
    opacity: !enabled ? 0.4 : press.pressed ? 0.7 : 1
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: activated()
    Keys.onReturnPressed: activated()
    Keys.onEnterPressed: activated()
    Keys.onSpacePressed: activated()

    Row {
        id: content
        anchors.centerIn: parent
        spacing: 6
        Image {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.symbol !== ""
            width: 16
            height: 16
            sourceSize: Qt.size(32, 32)
            source: button.symbol === "" ? "" : Theme.symbolSource(button.symbol, button.ink)
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            textFormat: Text.PlainText
            color: button.ink
            font.pixelSize: Theme.labelSize
        }
    }
    HoverHandler { id: hover }
    TapHandler {
        id: press
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: button.activated()
    }
}
