// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// One workspace with all that can be set about it. Every change counts at once.
FocusScope {
    id: page

    required property Workspaces workspaces
    required property Settings settings
    readonly property WorkspaceEditor editor: workspaces.editor
    property bool pickingSymbol: false

    signal filesRequested(bool folders)

    function takeFocus(): void {
        nameBox.takeFocus()
    }

    Connections {
        target: page.editor
        function onWorkspaceChanged() {
            page.pickingSymbol = false
            view.contentY = 0
        }
    }

    Flickable {
        id: view

        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: foot.top }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: body.height + 2 * Theme.unit

        // What has the focus is in view.
        function reveal(item: Item): void {
            let above = item
            while (above && above !== body)
                above = above.parent
            if (!above)
                return
            const top = item.mapToItem(body, 0, 0).y
            const bottom = top + item.height
            if (top < contentY)
                contentY = Math.max(0, top - Theme.unit)
            else if (bottom > contentY + height)
                contentY = Math.min(contentHeight - height, bottom - height + Theme.unit)
        }
        readonly property Item focused: Window.activeFocusItem
        function revealFocused(): void {
            if (focused && focused.height < height)
                reveal(focused)
        }
        onFocusedChanged: revealFocused()
        // A form that has just opened takes the focus before it has its place.
        onContentHeightChanged: Qt.callLater(revealFocused)

        Column {
            id: body

            width: view.width
            spacing: 3 * Theme.unit

            Column {
                width: parent.width
                spacing: Theme.unit + 4

                Item {
                    width: parent.width
                    height: 44

                    Rectangle {
                        id: symbolButton
                        anchors.left: parent.left
                        width: 44
                        height: 44
                        radius: 12
                        color: page.pickingSymbol ? Theme.accent : hover.hovered ? Theme.chipHover : Theme.fieldFill
                        border.width: activeFocus ? 2 : 1
                        border.color: activeFocus ? Theme.accent : Theme.fieldBorder
                        activeFocusOnTab: true

                        Accessible.role: Accessible.Button
                        Accessible.name: qsTr("Symbol")
                        Accessible.description: page.editor.symbol
                        Accessible.focusable: true
                        Accessible.onPressAction: toggle()
                        Keys.onReturnPressed: toggle()
                        Keys.onSpacePressed: toggle()

                        function toggle(): void {
                            page.pickingSymbol = !page.pickingSymbol
                        }

                        Image {
                            anchors.centerIn: parent
                            width: 24
                            height: 24
                            sourceSize: Qt.size(48, 48)
                            source: Theme.symbolSource(page.editor.symbol, page.pickingSymbol ? Theme.accentInk : Theme.text)
                        }
                        HoverHandler { id: hover }
                        TapHandler { onTapped: symbolButton.toggle() }
                    }
                    TextBox {
                        id: nameBox
                        anchors { left: symbolButton.right; leftMargin: Theme.unit + 4; right: parent.right }
                        height: 44
                        name: qsTr("Name")
                        fontSize: Theme.headingSize
                        fontWeight: Font.DemiBold
                        value: page.editor.name
                        onCommitted: text => page.editor.name = text
                    }
                }
                SymbolPicker {
                    width: parent.width
                    height: implicitHeight
                    visible: page.pickingSymbol
                    editor: page.editor
                    onChosen: symbol => {
                        page.editor.symbol = symbol
                        page.pickingSymbol = false
                        symbolButton.forceActiveFocus()
                    }
                    onClosed: {
                        page.pickingSymbol = false
                        symbolButton.forceActiveFocus()
                    }
                }
            }
            WorkspaceItemsSection {
                width: parent.width
                editor: page.editor
                onFilesRequested: folders => page.filesRequested(folders)
            }
            WindowsSection {
                width: parent.width
                workspaces: page.workspaces
            }
            EditorSection {
                width: parent.width
                title: qsTr("Other apps")
                ChoiceList {
                    width: parent.width
                    options: page.editor.othersTitles
                    current: page.editor.others
                    onChosen: index => page.editor.others = index
                }
            }
            TriggersSection {
                width: parent.width
                editor: page.editor
            }
            EditorSection {
                width: parent.width
                title: qsTr("Grid")
                CheckMark {
                    text: page.editor.focusGridText
                    checked: page.editor.focusGrid
                    onToggled: page.editor.focusGrid = !page.editor.focusGrid
                }
            }
            EditorSection {
                width: parent.width
                title: qsTr("When any workspace closes")
                ChoiceList {
                    width: parent.width
                    options: page.settings.closeAppsTitles
                    current: page.settings.closeApps
                    onChosen: index => page.settings.closeApps = index
                }
                HintText {
                    width: parent.width
                    text: page.settings.closingText
                }
            }
            EditorSection {
                width: parent.width
                title: qsTr("Shortcut")
                ShortcutRecorder {
                    width: parent.width
                    height: implicitHeight
                    editor: page.editor
                }
            }
            EditorSection {
                width: parent.width
                title: qsTr("Link")
                CopyableLink {
                    width: parent.width
                    link: page.editor.link
                    onCopied: page.editor.copy(link)
                }
            }
        }
    }

    // How much more there is below.
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: foot.top }
        height: 1
        visible: view.contentY < view.contentHeight - view.height - 1
        color: Theme.separator
    }

    Item {
        id: foot

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: Theme.controlHeight + 2 * Theme.unit

        Row {
            anchors { left: parent.left; bottom: parent.bottom }
            spacing: Theme.unit
            PanelButton {
                text: qsTr("Open")
                primary: true
                onActivated: page.workspaces.open(page.editor.workspace)
            }
            PanelButton {
                text: qsTr("Focus session…")
                onActivated: page.workspaces.chooseSession(page.editor.workspace)
            }
        }
        Row {
            anchors { right: parent.right; bottom: parent.bottom }
            SymbolButton {
                symbol: "square.on.square"
                name: qsTr("Duplicate")
                onActivated: page.workspaces.duplicate(page.editor.workspace)
            }
            SymbolButton {
                symbol: "trash"
                name: qsTr("Delete")
                onActivated: page.workspaces.remove(page.editor.workspace)
            }
        }
    }
}
