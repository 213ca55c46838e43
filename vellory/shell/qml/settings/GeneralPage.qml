// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// How the grid looks and behaves.
Column {
    id: page

    required property Settings settings

    spacing: 4

    SettingsHeading {
        width: parent.width
        text: qsTr("Grid")
        bottomPadding: 4
    }
    CheckMark {
        text: qsTr("One list that scrolls, instead of pages")
        checked: page.settings.listMode
        onToggled: page.settings.listMode = !page.settings.listMode
    }
    CheckMark {
        text: qsTr("Names under the icons")
        checked: page.settings.showLabels
        onToggled: page.settings.showLabels = !page.settings.showLabels
    }
    CheckMark {
        text: qsTr("Badges on the icons")
        checked: page.settings.showBadges
        onToggled: page.settings.showBadges = !page.settings.showBadges
    }
    CheckMark {
        text: qsTr("Stay open after an app was opened")
        checked: page.settings.keepOpen
        onToggled: page.settings.keepOpen = !page.settings.keepOpen
    }
    CheckMark {
        text: qsTr("Reduce motion")
        checked: page.settings.reduceMotion
        onToggled: page.settings.reduceMotion = !page.settings.reduceMotion
    }
    Item { width: 1; height: Theme.unit }
    SettingsHeading {
        width: parent.width
        text: qsTr("Terminal")
        bottomPadding: 4
    }
    HintText {
        width: parent.width
        text: qsTr("The command “vellory” opens the grid, workspaces and focus sessions from scripts and terminals.")
        bottomPadding: 4
    }
    PanelButton {
        text: page.settings.hasCommand ? qsTr("Reinstall command-line tool") : qsTr("Install command-line tool")
        onActivated: page.settings.installCommand()
    }
}
