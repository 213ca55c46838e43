// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The panels that stand over the grid and keep it from being used, one at a time.
Item {
    id: panels

    required property Launcher launcher
    required property Suggestions suggestions
    required property Settings settings
    required property Workspaces workspaces

    readonly property bool moving: history.moving || hiddenApps.moving || emoji.moving || fromOpen.moving
                                   || session.moving || settingsPanel.moving

    HistoryPanel {
        id: history
        anchors.fill: parent
        visible: panels.launcher.panel === Launcher.History
        launcher: panels.launcher
    }
    HiddenAppsPanel {
        id: hiddenApps
        anchors.fill: parent
        visible: panels.launcher.panel === Launcher.HiddenApps
        launcher: panels.launcher
    }
    EmojiPanel {
        id: emoji
        anchors.fill: parent
        visible: panels.launcher.panel === Launcher.Emoji
        launcher: panels.launcher
    }
    NewFromOpenPanel {
        id: fromOpen
        anchors.fill: parent
        visible: panels.launcher.panel === Launcher.WorkspaceFromOpen
        launcher: panels.launcher
        workspaces: panels.workspaces
    }
    FocusSessionPanel {
        id: session
        anchors.fill: parent
        visible: panels.launcher.panel === Launcher.FocusSession
        launcher: panels.launcher
        workspaces: panels.workspaces
    }
    SettingsPanel {
        id: settingsPanel
        anchors.fill: parent
        visible: panels.launcher.panel === Launcher.Settings
        launcher: panels.launcher
        settings: panels.settings
        suggestions: panels.suggestions
    }
}
