// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A workspace in the strip: its symbol and name, its shortcut, and, while it is open, a way to
// close it.
Item {
    id: chip

    required property string name
    required property string symbol
    required property string shortcut
    required property bool active
    property bool current: false // the keys are on it
    property bool targeted: false // a dragged app would be added to it

    signal opened()
    signal closed()
    signal menuRequested(point at)

    readonly property color ink: active ? Theme.accentInk : Theme.text

    width: Math.min(Theme.chipWidth, content.implicitWidth + 24 + (active ? close.width - Theme.unit : 0))
    height: Theme.chipHeight

    Rectangle {
        id: face

        anchors.fill: parent
        radius: height / 2
        color: chip.active ? Theme.accent : hover.hovered || chip.targeted ? Theme.chipHover : Theme.fieldFill
        border.width: chip.current || chip.targeted ? 2 : chip.active ? 0 : 1
        border.color: chip.current ? (chip.active ? Theme.text : Theme.accent) : chip.targeted ? Theme.accent : Theme.fieldBorder
        scale: press.pressed ? 0.97 : chip.targeted && !Theme.reduceMotion ? 1.05 : 1
        Behavior on scale { NumberAnimation { duration: Theme.hover } }

        Accessible.role: Accessible.Button
        Accessible.name: chip.name
        Accessible.description: [chip.active ? qsTr("Open") : "", chip.shortcut].filter(part => part !== "").join(", ")
        Accessible.focusable: true
        Accessible.checkable: true
        Accessible.checked: chip.active
        Accessible.onPressAction: chip.opened()

        HoverHandler { id: hover }
        TapHandler {
            id: press
            onTapped: chip.opened()
            onLongPressed: {
                if (press.point.device.type === PointerDevice.TouchScreen)
                    chip.menuRequested(press.point.scenePosition)
            }
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: eventPoint => chip.menuRequested(eventPoint.scenePosition)
        }

        Row {
            id: content

            anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
            spacing: Theme.unit

            Image {
                id: mark
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.symbol
                height: Theme.symbol
                sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
                source: Theme.symbolSource(chip.symbol, chip.ink)
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, Theme.chipWidth - 24 - mark.width - Theme.unit
                                - (hint.visible ? hint.width + Theme.unit : 0) - (chip.active ? close.width : 0))
                text: chip.name
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                color: chip.ink
                font { pixelSize: Theme.labelSize; weight: Font.Medium }
            }
            Text {
                id: hint
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== "" && !chip.active
                text: chip.shortcut
                color: Theme.textDim
                font.pixelSize: Theme.hintSize
            }
        }
    }

    // Beside the face and not in it: a button has no parts to assistive technology.
    Rectangle {
        id: close

        anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
        width: 24
        height: 24
        visible: chip.active
        radius: width / 2
        color: closeHover.hovered ? Theme.accentHover : "transparent"

        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Close %1").arg(chip.name)
        Accessible.onPressAction: chip.closed()

        Image {
            anchors.centerIn: parent
            width: 14
            height: 14
            sourceSize: Qt.size(28, 28)
            source: Theme.symbolSource("xmark", Theme.accentInk)
        }
        HoverHandler { id: closeHover }
        // Takes the press, so that what lies below does not hear it.
        MouseArea {
            anchors.fill: parent
            onClicked: chip.closed()
            Accessible.ignored: true
        }
    }
}
