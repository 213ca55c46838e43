// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Finds apps by name and adds them; it stays for more until it is closed.
Column {
    id: finder

    // Has `findApps` and `addApp`.
    required property var source
    property var found: source.findApps("")
    signal closed()

    spacing: 4

    function search(): void {
        found = source.findApps(box.text)
    }
    function add(index: int): void {
        if (index < 0 || index >= found.length)
            return
        if (found[index].added)
            return
        source.addApp(found[index].app)
        search()
    }

    Item {
        width: parent.width
        height: box.height

        TextBox {
            id: box
            anchors { left: parent.left; right: done.left; rightMargin: Theme.unit }
            name: qsTr("Find an app")
            placeholder: qsTr("Find an app")
            onEdited: {
                finder.search()
                list.currentIndex = 0
            }
            draft: true
            onCommitted: finder.add(list.currentIndex)
            onKeyPressed: event => {
                event.accepted = true
                if (event.key === Qt.Key_Down)
                    list.incrementCurrentIndex()
                else if (event.key === Qt.Key_Up)
                    list.decrementCurrentIndex()
                else if (event.key === Qt.Key_Escape)
                    finder.closed()
                else
                    event.accepted = false
            }
            Component.onCompleted: takeFocus()
        }
        PanelButton {
            id: done
            anchors.right: parent.right
            text: qsTr("Done")
            onActivated: finder.closed()
        }
    }
    ListView {
        id: list

        width: parent.width
        height: Math.min(contentHeight, 5 * 36)
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        model: finder.found
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Apps")

        delegate: Rectangle {
            id: app

            required property int index
            required property var modelData

            width: ListView.view.width
            height: 36
            radius: 10
            color: ListView.isCurrentItem || hover.hovered ? Theme.menuHover : "transparent"
            opacity: modelData.added ? 0.5 : 1

            Accessible.role: Accessible.ListItem
            Accessible.name: modelData.name
            Accessible.onPressAction: finder.add(index)

            AppIcon {
                id: icon
                anchors { left: parent.left; leftMargin: Theme.unit; verticalCenter: parent.verticalCenter }
                width: 24
                height: 24
                size: 24
                source: app.modelData.icon
            }
            Text {
                anchors { left: icon.right; leftMargin: 10; right: mark.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
                text: app.modelData.name
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                maximumLineCount: 1
                color: Theme.text
                font.pixelSize: Theme.bodySize
            }
            Image {
                id: mark
                anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
                width: 16
                height: 16
                sourceSize: Qt.size(32, 32)
                source: Theme.symbolSource(app.modelData.added ? "checkmark" : "plus", Theme.textDim)
            }
            HoverHandler { id: hover }
            TapHandler {
                gesturePolicy: TapHandler.ReleaseWithinBounds
                onTapped: finder.add(app.index)
            }
        }
    }
    HintText {
        width: parent.width
        visible: list.count === 0
        text: qsTr("No app of that name.")
    }
}
