// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The workspaces beside the grid, which stays in use: all of them in a list, or one open to be
// changed. Apps can be dragged here from the grid. Nothing of it is made before it is shown.
// Components are not bound here; see TileView.
FocusScope {
    id: panel

    required property Launcher launcher
    required property Workspaces workspaces
    required property Settings settings
    readonly property bool shown: launcher.panel === Launcher.Workspaces
    readonly property bool editing: workspaces.editor.workspace !== ""
    readonly property bool moving: fade.running
    // A dragged app would be added to what is edited, or to this workspace of the list.
    property bool targeted: false
    property string target: ""

    signal closed()

    // What a dragged tile at a point of this item would be added to: a workspace, or "".
    function workspaceAt(at: point): string {
        if (!shown || !contains(at))
            return ""
        if (editing)
            return workspaces.editor.workspace
        return page.item ? page.item.workspaceAt(mapToItem(page.item, at)) : ""
    }
    function takeFocus(): void {
        if (page.item)
            page.item.takeFocus()
    }
    function back(): void {
        if (editing) {
            workspaces.editor.close()
        } else {
            launcher.closePanel()
        }
    }

    visible: opacity > 0
    opacity: shown ? 1 : 0
    enabled: shown
    Behavior on opacity { NumberAnimation { id: fade; duration: Theme.makeRoom } }

    onShownChanged: {
        if (shown) {
            workspaces.checkPermission(false)
            takeFocus()
        }
    }
    Connections {
        target: panel.workspaces.editor
        function onWorkspaceChanged() {
            if (panel.shown)
                panel.takeFocus()
        }
    }
    Keys.onEscapePressed: back()
    // Typing is not searching here.
    Keys.onPressed: event => event.accepted = event.text !== "" && event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab

    Accessible.role: Accessible.Pane
    Accessible.name: heading.text

    BorderImage {
        anchors.fill: parent
        anchors.margins: -48
        anchors.topMargin: -32
        anchors.bottomMargin: -64
        source: "image://shadow/48/35"
        border { left: 96; right: 96; top: 96; bottom: 96 }
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.panelRadius
        color: Theme.panelFill
        border.width: panel.targeted ? 2 : 1
        border.color: panel.targeted ? Theme.accent : Theme.panelBorder
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
        Accessible.ignored: true
    }

    Item {
        id: head

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.panelPadding - 4; topMargin: Theme.panelPadding - 8 }
        height: Theme.controlHeight

        SymbolButton {
            id: backButton
            anchors.left: parent.left
            visible: panel.editing
            width: visible ? implicitWidth : 0
            implicitWidth: Theme.controlHeight
            symbol: panel.launcher.mirrored ? "chevron.right" : "chevron.left"
            name: qsTr("All workspaces")
            onActivated: panel.back()
        }
        Text {
            id: heading
            anchors { left: backButton.right; leftMargin: 4; right: closeButton.left; verticalCenter: parent.verticalCenter }
            text: panel.editing ? qsTr("Edit workspace") : qsTr("Workspaces")
            elide: Text.ElideRight
            color: Theme.text
            font { pixelSize: Theme.headingSize; weight: Font.DemiBold }
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        SymbolButton {
            id: closeButton
            anchors.right: parent.right
            symbol: "xmark.circle.fill"
            name: qsTr("Close")
            onActivated: panel.launcher.closePanel()
        }
    }

    Loader {
        id: page

        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom; margins: Theme.panelPadding; topMargin: 2 * Theme.unit }
        focus: true
        active: panel.visible
        sourceComponent: panel.editing ? editorPage : listPage
        onLoaded: panel.takeFocus()
    }
    Component {
        id: listPage
        WorkspaceListPage {
            workspaces: panel.workspaces
            target: panel.target
        }
    }
    Component {
        id: editorPage
        WorkspaceEditorPage {
            workspaces: panel.workspaces
            settings: panel.settings
            onFilesRequested: folders => {
                files.active = true
                if (files.item) {
                    panel.workspaces.choosingFiles = true
                    files.item.choose(folders, panel.workspaces.home)
                }
            }
        }
    }

    Loader {
        id: files
        active: false
        source: "FilesDialog.qml"
    }
    Connections {
        target: files.item
        ignoreUnknownSignals: true
        function onChosen(chosen) { panel.workspaces.editor.addFiles(chosen) }
        function onClosed() {
            panel.workspaces.choosingFiles = false
            panel.takeFocus()
        }
    }
}
