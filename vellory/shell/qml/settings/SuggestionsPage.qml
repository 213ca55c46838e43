// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Which apps stand above the grid, and what is learned about habits.
Flickable {
    id: page

    required property Settings settings

    contentHeight: content.height
    clip: true
    boundsBehavior: Flickable.StopAtBounds

    Column {
        id: content

        width: page.width
        spacing: Theme.unit

        SettingsHeading {
            width: parent.width
            text: qsTr("Apps above the grid")
        }
        ChoiceList {
            width: parent.width
            options: page.settings.smartListModes
            current: page.settings.smartListMode
            onChosen: index => page.settings.smartListMode = index
        }
        Item {
            width: 1
            height: Theme.unit
        }
        SettingsHeading {
            width: parent.width
            text: qsTr("Habits")
        }
        Text {
            width: parent.width
            text: page.settings.habitPromise
            color: Theme.text
            wrapMode: Text.WordWrap
            lineHeight: 1.2
            font.pixelSize: Theme.bodySize
        }
        Text {
            width: parent.width
            text: page.settings.habitRecord
            color: Theme.textDim
            wrapMode: Text.WordWrap
            font.pixelSize: Theme.labelSize
        }
    }
}
