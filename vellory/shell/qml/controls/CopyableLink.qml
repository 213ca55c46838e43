// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A link to be copied.
Rectangle {
    id: row

    required property string link
    signal copied()

    height: Theme.controlHeight
    radius: 10
    color: Theme.menuHover

    Text {
        anchors { left: parent.left; leftMargin: 12; right: copy.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
        text: row.link
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: Theme.text
        font { pixelSize: Theme.labelSize; family: Theme.fixedFamily }
        Accessible.role: Accessible.StaticText
        Accessible.name: row.link
    }
    SymbolButton {
        id: copy
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        symbol: "square.on.square"
        name: qsTr("Copy %1").arg(row.link)
        onActivated: row.copied()
    }
}
