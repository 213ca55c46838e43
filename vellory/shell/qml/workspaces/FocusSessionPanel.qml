// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Opens a workspace for a set time.
Panel {
    id: panel

    required property Launcher launcher
    required property Workspaces workspaces
    property int minutes: workspaces.usualMinutes
    readonly property string workspace: workspaces.sessionWorkspace
    readonly property bool ready: workspace !== "" && minutes >= workspaces.leastMinutes && minutes <= workspaces.mostMinutes

    title: qsTr("Focus session")
    cardWidth: 480
    cardHeight: body.implicitHeight + 7 * Theme.panelPadding / 2 + 8
    onClosed: launcher.closePanel()
    onVisibleChanged: {
        if (visible) {
            minutes = workspaces.usualMinutes
            lengths.itemAt(1).forceActiveFocus()
        }
    }

    function start(): void {
        if (ready)
            workspaces.startSession(workspace, minutes)
    }
    Keys.onReturnPressed: start()
    Keys.onEnterPressed: start()

    Column {
        id: body

        width: parent.width
        spacing: 2 * Theme.unit

        HintText {
            width: parent.width
            text: panel.workspaces.sessionText
        }
        ListView {
            id: list

            width: parent.width
            height: Math.min(contentHeight, 4.5 * 40)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: true
            model: panel.visible ? panel.workspaces.rows : null
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Workspaces")
            Keys.onUpPressed: panel.workspaces.sessionWorkspace = model.row(Math.max(0, chosenIndex() - 1)).key
            Keys.onDownPressed: panel.workspaces.sessionWorkspace = model.row(Math.min(count - 1, chosenIndex() + 1)).key

            function chosenIndex(): int {
                for (let i = 0; i < count; ++i) {
                    if (model.row(i).key === panel.workspace)
                        return i
                }
                return -1
            }

            delegate: Rectangle {
                id: row

                required property string key
                required property string name
                required property string symbol
                readonly property bool chosen: key === panel.workspace

                width: ListView.view.width
                height: 40
                radius: 10
                color: chosen ? Theme.accent : hover.hovered ? Theme.menuHover : "transparent"
                border { width: chosen && list.activeFocus ? 2 : 0; color: Theme.text }

                Accessible.role: Accessible.RadioButton
                Accessible.name: name
                Accessible.checkable: true
                Accessible.checked: chosen
                Accessible.onPressAction: panel.workspaces.sessionWorkspace = key

                Image {
                    id: mark
                    anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
                    width: Theme.symbol
                    height: Theme.symbol
                    sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
                    source: Theme.symbolSource(row.symbol, row.chosen ? Theme.accentInk : Theme.text)
                }
                Text {
                    anchors { left: mark.right; leftMargin: 10; right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
                    text: row.name
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    color: row.chosen ? Theme.accentInk : Theme.text
                    font.pixelSize: Theme.bodySize
                }
                HoverHandler { id: hover }
                TapHandler { onTapped: panel.workspaces.sessionWorkspace = row.key }
            }
        }
        Flow {
            width: parent.width
            spacing: Theme.unit

            Repeater {
                id: lengths
                model: panel.workspaces.sessionLengths

                PanelButton {
                    required property int modelData
                    text: modelData
                    Accessible.name: qsTr("%1 minutes").arg(modelData)
                    Accessible.checkable: true
                    Accessible.checked: primary
                    width: 46
                    primary: panel.minutes === modelData
                    onActivated: panel.minutes = modelData
                }
            }
            TextBox {
                width: 64
                name: qsTr("Minutes")
                value: String(panel.minutes)
                wrong: panel.minutes < panel.workspaces.leastMinutes || panel.minutes > panel.workspaces.mostMinutes
                onEdited: text => panel.minutes = /^[0-9]{1,4}$/.test(text.trim()) ? Number(text) : 0
                onCommitted: {
                    if (editing)
                        panel.start()
                }
            }
            Text {
                height: Theme.controlHeight
                verticalAlignment: Text.AlignVCenter
                text: qsTr("minutes")
                color: Theme.text
                font.pixelSize: Theme.bodySize
            }
        }
        Item {
            width: parent.width
            height: Theme.controlHeight
            PanelButton {
                anchors.right: parent.right
                text: qsTr("Start")
                primary: true
                enabled: panel.ready
                onActivated: panel.start()
            }
        }
    }
}
