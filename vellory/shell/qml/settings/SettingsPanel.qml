// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The settings over the grid.
Panel {
    id: panel

    required property Launcher launcher
    required property Settings settings
    required property Suggestions suggestions

    title: qsTr("Settings")
    cardWidth: Theme.settingsWidth
    cardHeight: Theme.settingsHeight
    onClosed: launcher.closePanel()
    onVisibleChanged: {
        if (visible)
            pages.takeFocus()
    }

    SettingsPages {
        id: pages
        anchors.fill: parent
        settings: panel.settings
        suggestions: panel.suggestions
    }
}
