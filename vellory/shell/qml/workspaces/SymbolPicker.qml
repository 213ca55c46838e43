// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The symbols to choose from, in groups, and a field that finds one by what it stands for. Arrows
// move among them, Return takes the chosen one.
FocusScope {
    id: picker

    required property WorkspaceEditor editor
    // The chosen one by the keys, counted over all groups.
    property int current: -1
    readonly property var groups: visible ? editor.findSymbols(search.text) : []
    readonly property int perRow: Math.max(1, Math.floor(width / 40))
    readonly property var names: {
        const all = []
        for (const group of groups)
            for (const name of group.symbols)
                all.push(name)
        return all
    }

    signal chosen(string symbol)
    signal closed()

    function choose(index: int): void {
        if (index >= 0 && index < names.length)
            chosen(names[index])
    }
    // How many symbols stand before a group.
    function firstOf(group: int): int {
        let count = 0
        for (let i = 0; i < group; ++i)
            count += groups[i].symbols.length
        return count
    }

    implicitHeight: Math.min(320, search.height + Theme.unit + body.implicitHeight)

    onVisibleChanged: {
        if (visible) {
            search.clear()
            current = -1
            search.takeFocus()
        }
    }
    Keys.onEscapePressed: closed()

    TextBox {
        id: search

        anchors { left: parent.left; right: parent.right; top: parent.top }
        name: qsTr("Find a symbol")
        placeholder: qsTr("Find a symbol, such as “music”")
        draft: true
        onEdited: picker.current = text === "" ? -1 : 0
        onCommitted: picker.choose(picker.current)
        onKeyPressed: event => {
            const steps = {}
            steps[Qt.Key_Down] = picker.current < 0 ? 1 : picker.perRow
            steps[Qt.Key_Up] = -picker.perRow
            if (picker.current >= 0) {
                steps[Qt.Key_Right] = LayoutMirroring.enabled ? -1 : 1
                steps[Qt.Key_Left] = LayoutMirroring.enabled ? 1 : -1
            }
            if (steps[event.key] !== undefined) {
                picker.current = Math.max(-1, Math.min(picker.names.length - 1, picker.current + steps[event.key]))
                event.accepted = true
            }
        }
    }

    Flickable {
        id: view

        anchors { left: parent.left; right: parent.right; top: search.bottom; bottom: parent.bottom; topMargin: Theme.unit }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: body.implicitHeight

        Column {
            id: body

            width: view.width
            spacing: 4

            Repeater {
                model: picker.groups

                Column {
                    id: group

                    required property int index
                    required property var modelData
                    readonly property int first: picker.firstOf(index)

                    width: body.width

                    Text {
                        height: 22
                        verticalAlignment: Text.AlignVCenter
                        text: group.modelData.title
                        color: Theme.textDim
                        font.pixelSize: Theme.hintSize + 1
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }
                    Flow {
                        width: parent.width
                        Repeater {
                            model: group.modelData.symbols

                            Rectangle {
                                id: cell

                                required property int index
                                required property string modelData
                                readonly property int place: group.first + index
                                readonly property bool worn: modelData === picker.editor.symbol
                                readonly property bool pointed: picker.current === place

                                width: 40
                                height: 40
                                radius: 10
                                color: worn ? Theme.accent : hover.hovered || pointed ? Theme.menuHover : "transparent"
                                border { width: pointed ? 2 : 0; color: worn ? Theme.text : Theme.accent }
                                onPointedChanged: {
                                    if (!pointed)
                                        return
                                    const y = cell.mapToItem(body, 0, 0).y
                                    view.contentY = Math.max(0, Math.min(view.contentHeight - view.height,
                                                                         Math.max(y + 40 - view.height, Math.min(y, view.contentY))))
                                }

                                Accessible.role: Accessible.Button
                                Accessible.name: modelData
                                Accessible.checkable: true
                                Accessible.checked: worn
                                Accessible.onPressAction: picker.chosen(modelData)

                                Image {
                                    anchors.centerIn: parent
                                    width: 20
                                    height: 20
                                    sourceSize: Qt.size(40, 40)
                                    source: Theme.symbolSource(cell.modelData, cell.worn ? Theme.accentInk : Theme.text)
                                }
                                HoverHandler { id: hover }
                                TapHandler {
                                    gesturePolicy: TapHandler.ReleaseWithinBounds
                                    onTapped: picker.chosen(cell.modelData)
                                }
                            }
                        }
                    }
                }
            }
            EmptyState {
                anchors.horizontalCenter: parent.horizontalCenter
                visible: picker.groups.length === 0
                title: qsTr("No such symbol")
                text: qsTr("Try another word for it.")
            }
        }
    }
}
