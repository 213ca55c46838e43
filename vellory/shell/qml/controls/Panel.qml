// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A sheet over the grid with a title and a way to close it. What stands in it takes the focus.
FocusScope {
    id: panel

    required property string title
    property int cardWidth: 520
    property int cardHeight: 480
    default property alias content: body.data
    // It comes up; it goes at once.
    readonly property bool moving: rising.running

    signal closed()

    onVisibleChanged: {
        if (visible) {
            forceActiveFocus()
            rising.restart()
        }
    }
    NumberAnimation on opacity {
        id: rising
        running: false
        from: 0
        to: 1
        duration: Theme.panelIn
    }
    Keys.onEscapePressed: closed()
    // Typing is not searching here.
    Keys.onPressed: event => event.accepted = event.text !== "" && event.key !== Qt.Key_Tab

    Accessible.role: Accessible.Dialog
    Accessible.name: title

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onClicked: panel.closed()
        onWheel: wheel => wheel.accepted = true
        Accessible.ignored: true
    }

    Item {
        anchors.centerIn: parent
        width: Math.min(panel.cardWidth, panel.width - 4 * Theme.unit)
        height: Math.min(panel.cardHeight, panel.height - 4 * Theme.unit)

        BorderImage {
            anchors.fill: parent
            anchors.margins: -48
            anchors.topMargin: -32
            anchors.bottomMargin: -64
            source: "image://shadow/48/35"
            border { left: 96; right: 96; top: 96; bottom: 96 }
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.panelRadius
            color: Theme.menuFill
            border { width: 1; color: Theme.panelBorder }
        }
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            Accessible.ignored: true
        }
        Text {
            id: heading
            anchors { left: parent.left; right: close.left; top: parent.top; margins: Theme.panelPadding }
            height: Theme.controlHeight - 8
            verticalAlignment: Text.AlignVCenter
            text: panel.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.text
            font { pixelSize: Theme.headingSize; weight: Font.DemiBold }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        SymbolButton {
            id: close
            anchors { right: parent.right; top: parent.top; margins: Theme.panelPadding - 4 }
            symbol: "xmark.circle.fill"
            name: qsTr("Close")
            onActivated: panel.closed()
        }
        Item {
            id: body
            anchors { left: parent.left; right: parent.right; top: heading.bottom; bottom: parent.bottom; margins: Theme.panelPadding; topMargin: 2 * Theme.unit }
        }
    }
}
