// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Greets a new user and offers how the grid may start. It stands below the grid, over nothing that
// one would want to click, and goes once something was chosen.
Rectangle {
    id: card

    required property Launcher launcher

    width: content.implicitWidth + 6 * Theme.unit
    height: content.implicitHeight + 4 * Theme.unit
    radius: 20
    color: Theme.panelFill
    border.width: 1
    border.color: Theme.panelBorder

    // Clicks beside the buttons stay here.
    MouseArea {
        anchors.fill: parent
        Accessible.ignored: true
    }

    Column {
        id: content

        anchors.centerIn: parent
        spacing: 2 * Theme.unit

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Welcome to vellory")
            color: Theme.text
            font { pixelSize: 17; weight: Font.DemiBold }
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.unit

            PanelButton {
                text: qsTr("Sort into folders by category")
                onActivated: card.launcher.startWithFolders()
            }
            PanelButton {
                text: qsTr("Every app, A to Z")
                onActivated: card.launcher.startAlphabetically()
            }
            PanelButton {
                text: qsTr("Keep it like this")
                primary: true
                onActivated: card.launcher.endWelcome()
            }
        }
    }
}
