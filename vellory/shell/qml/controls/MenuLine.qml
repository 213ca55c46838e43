// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// One line of a menu.
Item {
    id: line

    required property var entry
    property bool chosen: false
    readonly property bool isSeparator: entry.kind === "separator"

    signal pointed(point at)
    signal activated()

    height: isSeparator ? Theme.unit + 1 : Theme.menuItemHeight

    Accessible.role: isSeparator ? Accessible.Separator : Accessible.MenuItem
    Accessible.name: entry.text
    Accessible.checkable: entry.checked
    Accessible.checked: entry.checked
    Accessible.onPressAction: activated()

    Rectangle {
        visible: line.isSeparator
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; leftMargin: 6; rightMargin: 6 }
        height: 1
        color: Theme.separator
    }
    Rectangle {
        visible: line.chosen && !line.isSeparator
        anchors.fill: parent
        radius: 8
        color: Theme.accent
    }

    Item {
        id: mark
        visible: !line.isSeparator
        anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
        width: Theme.symbol
        height: Theme.symbol

        Rectangle {
            anchors.centerIn: parent
            visible: line.entry.tint !== ""
            width: 14
            height: 14
            radius: 7
            color: Theme.tint(line.entry.tint)
            border { width: line.chosen ? 1 : 0; color: Theme.accentInk }
        }
        Image {
            anchors.fill: parent
            visible: line.entry.tint === "" && line.entry.symbol !== ""
            sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
            source: visible ? Theme.symbolSource(line.entry.symbol, line.chosen ? Theme.accentInk : Theme.textDim) : ""
        }
    }
    Text {
        visible: !line.isSeparator
        anchors { left: mark.right; leftMargin: 10; right: end.left; rightMargin: 6; verticalCenter: parent.verticalCenter }
        text: line.entry.text
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        color: line.chosen ? Theme.accentInk : Theme.text
        font.pixelSize: Theme.bodySize
    }
    Image {
        id: end
        anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
        width: 14
        height: 14
        visible: line.entry.kind === "submenu" || line.entry.checked
        sourceSize: Qt.size(28, 28)
        mirror: LayoutMirroring.enabled && line.entry.kind === "submenu"
        source: visible ? Theme.symbolSource(line.entry.kind === "submenu" ? "chevron.right" : "checkmark",
                                             line.chosen ? Theme.accentInk : Theme.textDim) : ""
    }

    HoverHandler {
        enabled: !line.isSeparator
        onPointChanged: {
            if (hovered)
                line.pointed(point.scenePosition)
        }
    }
    TapHandler {
        enabled: !line.isSeparator
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onTapped: line.activated()
    }
}
