// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Makes a workspace of what is open, with as much of it as the user ticks.
Panel {
    id: panel

    required property Launcher launcher
    required property Workspaces workspaces
    property var taken: [false, false, false]

    title: workspaces.newFromOpenText
    cardWidth: 480
    cardHeight: body.implicitHeight + 7 * Theme.panelPadding / 2 + 8
    onClosed: launcher.closePanel()
    onVisibleChanged: {
        if (visible) {
            workspaces.checkPermission(false)
            taken = [workspaces.canPlaceWindows, false, false]
            first.forceActiveFocus()
        }
    }

    function toggle(index: int): void {
        const next = taken.slice()
        next[index] = !next[index]
        taken = next
    }
    function make(): void {
        workspaces.makeFromOpen(taken[0], taken[1], taken[2])
    }
    Keys.onReturnPressed: make()
    Keys.onEnterPressed: make()

    Column {
        id: body

        width: parent.width
        spacing: Theme.unit

        HintText {
            width: parent.width
            text: qsTr("The apps that are open, and:")
        }
        CheckMark {
            id: first
            text: panel.workspaces.takeTexts[0]
            checked: panel.taken[0]
            onToggled: panel.toggle(0)
        }
        HintText {
            x: 26
            width: parent.width - x
            visible: panel.taken[0] && !panel.workspaces.canPlaceWindows
            color: Theme.warning
            text: panel.workspaces.allowHowText
        }
        PanelButton {
            x: 26
            visible: panel.taken[0] && !panel.workspaces.canPlaceWindows
            text: panel.workspaces.allowText
            onActivated: panel.workspaces.checkPermission(true)
        }
        CheckMark {
            text: panel.workspaces.takeTexts[1]
            checked: panel.taken[1]
            onToggled: panel.toggle(1)
        }
        CheckMark {
            text: panel.workspaces.takeTexts[2]
            checked: panel.taken[2]
            onToggled: panel.toggle(2)
        }
        HintText {
            width: parent.width
            text: panel.workspaces.asksOnceText
        }
        Item {
            width: parent.width
            height: Theme.controlHeight + Theme.unit
            PanelButton {
                anchors { right: parent.right; bottom: parent.bottom }
                text: qsTr("Make workspace")
                primary: true
                onActivated: panel.make()
            }
        }
    }
}
