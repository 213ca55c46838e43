// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The settings over the grid.
FocusScope {
    id: panel

    required property Settings settings
    required property Suggestions suggestions

    readonly property bool moving: opacity !== (settings.shown ? 1 : 0)

    visible: settings.shown || opacity > 0
    opacity: settings.shown ? 1 : 0
    Behavior on opacity { NumberAnimation { duration: Theme.makeRoom } }

    Keys.onEscapePressed: settings.shown = false

    onVisibleChanged: {
        if (visible)
            pages.takeFocus()
    }

    // What lies behind waits, and a click on it goes back there.
    Rectangle {
        anchors.fill: parent
        color: Theme.scrim
        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onClicked: panel.settings.shown = false
            onWheel: wheel => { wheel.accepted = true }
            Accessible.ignored: true
        }
    }

    Rectangle {
        id: surface

        anchors.centerIn: parent
        width: Math.min(Theme.settingsWidth, panel.width - 6 * Theme.unit)
        height: Math.min(Theme.settingsHeight, panel.height - 6 * Theme.unit)
        radius: Theme.panelRadius
        color: Theme.panelFill
        border.width: 1
        border.color: Theme.panelBorder

        Accessible.role: Accessible.Dialog
        Accessible.name: qsTr("Settings")

        MouseArea {
            anchors.fill: parent
            Accessible.ignored: true
        }

        SettingsPages {
            id: pages
            anchors.fill: parent
            settings: panel.settings
            suggestions: panel.suggestions
        }
    }
}
