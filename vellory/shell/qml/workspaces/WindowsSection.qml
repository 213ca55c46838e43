// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The window positions that opening the workspace restores.
EditorSection {
    id: section

    required property Workspaces workspaces
    readonly property WorkspaceEditor editor: workspaces.editor

    title: qsTr("Window positions")

    HintText {
        width: parent.width
        text: section.editor.windowCount === 0 ? qsTr("None saved: windows stay where they open.")
              : section.editor.windowCount === 1 ? qsTr("1 window has its place.")
                                                 : qsTr("%1 windows have their places.").arg(section.editor.windowCount)
    }
    HintText {
        width: parent.width
        visible: !section.workspaces.canPlaceWindows
        color: Theme.warning
        text: section.workspaces.allowHowText
    }
    Flow {
        width: parent.width
        spacing: Theme.unit

        PanelButton {
            visible: section.workspaces.canPlaceWindows
            text: qsTr("Capture window positions")
            onActivated: section.editor.captureWindows()
        }
        PanelButton {
            visible: !section.workspaces.canPlaceWindows
            text: section.workspaces.allowText
            onActivated: section.workspaces.checkPermission(true)
        }
        PanelButton {
            visible: section.editor.windowCount > 0
            text: qsTr("Clear")
            onActivated: section.editor.clearWindows()
        }
    }
}
