// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The apps that nobody has opened for long, stalest first.
Item {
    id: page

    required property Settings settings
    required property Suggestions suggestions

    SettingsHeading {
        id: heading
        anchors { left: parent.left; right: parent.right; top: parent.top }
        text: qsTr("Not opened in %1 days").arg(page.settings.unusedDays)
    }

    Text {
        anchors { left: parent.left; right: parent.right; top: heading.bottom; topMargin: Theme.unit }
        visible: list.count === 0
        text: qsTr("Every app was opened in the last %1 days.").arg(page.settings.unusedDays)
        color: Theme.textDim
        wrapMode: Text.WordWrap
        font.pixelSize: Theme.bodySize
    }

    ListView {
        id: list

        anchors { left: parent.left; right: parent.right; top: heading.bottom; topMargin: Theme.unit; bottom: parent.bottom }
        clip: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        model: page.settings.unusedApps
        Keys.onReturnPressed: {
            if (currentItem)
                page.suggestions.activate("app:" + model[currentIndex].id, false)
        }

        delegate: Rectangle {
            id: entry

            required property var modelData
            required property int index

            width: list.width
            height: 48
            radius: 10
            color: hover.hovered || (ListView.isCurrentItem && list.activeFocus) ? Theme.highlightFill : "transparent"

            Accessible.role: Accessible.ListItem
            Accessible.name: modelData.name
            Accessible.description: modelData.lastUsed
            Accessible.onPressAction: page.suggestions.activate("app:" + modelData.id, false)

            AppIcon {
                id: icon
                anchors { left: parent.left; leftMargin: Theme.unit; verticalCenter: parent.verticalCenter }
                width: 32
                height: 32
                size: 32
                source: entry.modelData.icon
            }
            Column {
                anchors { left: icon.right; leftMargin: 12; right: parent.right; rightMargin: Theme.unit; verticalCenter: parent.verticalCenter }
                Text {
                    width: parent.width
                    text: entry.modelData.name
                    textFormat: Text.PlainText
                    color: Theme.text
                    elide: Text.ElideRight
                    font.pixelSize: Theme.bodySize
                }
                Text {
                    width: parent.width
                    text: entry.modelData.lastUsed
                    color: Theme.textDim
                    elide: Text.ElideRight
                    font.pixelSize: Theme.labelSize
                }
            }
            HoverHandler {
                id: hover
            }
            TapHandler {
                onTapped: page.suggestions.activate("app:" + entry.modelData.id, false)
            }
        }
    }
}
