// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The apps that the grid does not show, each with a way back onto it.
Panel {
    id: panel

    required property Launcher launcher

    title: qsTr("Hidden apps")
    cardWidth: 460
    cardHeight: 480
    onClosed: launcher.closePanel()

    Keys.onUpPressed: list.decrementCurrentIndex()
    Keys.onDownPressed: list.incrementCurrentIndex()
    Keys.onReturnPressed: show(list.currentIndex)
    Keys.onEnterPressed: show(list.currentIndex)

    function show(index: int): void {
        if (index >= 0 && index < list.count)
            launcher.unhide(launcher.hiddenApps[index])
    }

    EmptyState {
        anchors.centerIn: parent
        visible: list.count === 0
        title: qsTr("No hidden apps")
        text: qsTr("Apps that you hide from the grid wait here.")
    }

    ListView {
        id: list

        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: panel.launcher.hiddenApps
        highlightMoveDuration: Theme.hover
        Accessible.role: Accessible.List
        Accessible.name: panel.title

        delegate: Rectangle {
            id: line

            required property int index
            required property string modelData

            width: ListView.view.width
            height: 52
            radius: 10
            color: ListView.isCurrentItem ? Theme.menuHover : "transparent"
            Accessible.role: Accessible.ListItem
            Accessible.name: nameText.text

            AppIcon {
                id: icon
                anchors { left: parent.left; leftMargin: Theme.unit; verticalCenter: parent.verticalCenter }
                width: 36
                height: 36
                size: 36
                source: panel.launcher.appIcon(line.modelData)
            }
            Text {
                id: nameText
                anchors { left: icon.right; leftMargin: 12; right: show.left; rightMargin: 12; verticalCenter: parent.verticalCenter }
                text: panel.launcher.appName(line.modelData)
                textFormat: Text.PlainText
                elide: Text.ElideMiddle
                color: Theme.text
                font.pixelSize: Theme.bodySize
            }
            PanelButton {
                id: show
                anchors { right: parent.right; rightMargin: Theme.unit; verticalCenter: parent.verticalCenter }
                text: qsTr("Show")
                onActivated: panel.show(line.index)
            }
        }
    }
}
