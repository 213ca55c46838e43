// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The panels that stand over the grid and keep it from being used, one at a time. Each is made when
// it is first wanted, and kept.
Item {
    id: panels

    required property Launcher launcher
    required property Suggestions suggestions
    required property Settings settings
    required property Workspaces workspaces

    readonly property bool moving: historySheet.moving || hiddenAppsSheet.moving || emojiSheet.moving
                                   || fromOpenSheet.moving || sessionSheet.moving || settingsSheet.moving

    component Sheet: Loader {
        property bool wanted: false
        // Not before it is there: it takes the focus when it becomes visible.
        readonly property bool shown: wanted && status === Loader.Ready
        readonly property bool moving: item !== null && item.moving

        anchors.fill: parent
        active: false
        onWantedChanged: {
            if (wanted)
                active = true
        }
    }

    Sheet {
        id: historySheet
        wanted: panels.launcher.panel === Launcher.History
        sourceComponent: HistoryPanel {
            visible: historySheet.shown
            launcher: panels.launcher
        }
    }
    Sheet {
        id: hiddenAppsSheet
        wanted: panels.launcher.panel === Launcher.HiddenApps
        sourceComponent: HiddenAppsPanel {
            visible: hiddenAppsSheet.shown
            launcher: panels.launcher
        }
    }
    Sheet {
        id: emojiSheet
        wanted: panels.launcher.panel === Launcher.Emoji
        sourceComponent: EmojiPanel {
            visible: emojiSheet.shown
            launcher: panels.launcher
        }
    }
    Sheet {
        id: fromOpenSheet
        wanted: panels.launcher.panel === Launcher.WorkspaceFromOpen
        sourceComponent: NewFromOpenPanel {
            visible: fromOpenSheet.shown
            launcher: panels.launcher
            workspaces: panels.workspaces
        }
    }
    Sheet {
        id: sessionSheet
        wanted: panels.launcher.panel === Launcher.FocusSession
        sourceComponent: FocusSessionPanel {
            visible: sessionSheet.shown
            launcher: panels.launcher
            workspaces: panels.workspaces
        }
    }
    Sheet {
        id: settingsSheet
        wanted: panels.launcher.panel === Launcher.Settings
        sourceComponent: SettingsPanel {
            visible: settingsSheet.shown
            launcher: panels.launcher
            settings: panels.settings
            suggestions: panels.suggestions
        }
    }
}
