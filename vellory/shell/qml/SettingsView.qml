// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The settings in a window of their own.
Rectangle {
    id: view

    required property Settings settings
    required property Suggestions suggestions

    color: Theme.windowFill

    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("Settings")

    Keys.onEscapePressed: Window.window.close()

    SettingsPages {
        anchors { fill: parent; margins: Theme.panelPadding }
        focus: true
        settings: view.settings
        suggestions: view.suggestions
        Component.onCompleted: takeFocus()
    }
}
