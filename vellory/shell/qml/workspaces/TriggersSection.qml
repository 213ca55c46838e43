// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// What opens the workspace by itself: a time, a display, a Focus.
EditorSection {
    id: section

    required property WorkspaceEditor editor
    // "", "display" or "focus": what is being added.
    property string adding: ""
    // The schedule whose form is open.
    property string openKey: ""

    title: qsTr("Opens by itself")

    function begin(kind: string): void {
        adding = kind
    }

    Connections {
        target: section.editor
        function onWorkspaceChanged() {
            section.adding = ""
            section.openKey = ""
        }
    }

    Repeater {
        model: section.editor.triggers

        Column {
            id: trigger

            required property int index
            required property string key
            required property string kind
            required property string title
            required property string symbol
            required property string link
            required property var weekdays
            required property string time
            readonly property bool open: section.openKey === key && kind === "schedule"

            width: section.width
            spacing: 4

            Rectangle {
                width: parent.width
                height: 36
                radius: 10
                color: hover.hovered ? Theme.menuHover : "transparent"
                border { width: activeFocus ? 2 : 0; color: Theme.accent }
                activeFocusOnTab: trigger.kind === "schedule"

                Accessible.role: Accessible.ListItem
                Accessible.name: trigger.title
                Accessible.onPressAction: toggle()
                Keys.onReturnPressed: toggle()
                Keys.onSpacePressed: toggle()

                function toggle(): void {
                    if (trigger.kind === "schedule")
                        section.openKey = trigger.open ? "" : trigger.key
                }

                HoverHandler { id: hover }
                TapHandler { onTapped: parent.toggle() }
                Image {
                    id: mark
                    anchors { left: parent.left; leftMargin: 10; verticalCenter: parent.verticalCenter }
                    width: Theme.symbol
                    height: Theme.symbol
                    sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
                    source: Theme.symbolSource(trigger.symbol, Theme.text)
                }
                Text {
                    anchors { left: mark.right; leftMargin: 10; right: chevron.left; rightMargin: 4; verticalCenter: parent.verticalCenter }
                    text: trigger.title
                    textFormat: Text.PlainText
                    elide: Text.ElideMiddle
                    maximumLineCount: 1
                    color: Theme.text
                    font.pixelSize: Theme.bodySize
                }
                Image {
                    id: chevron
                    anchors { right: remove.left; verticalCenter: parent.verticalCenter }
                    width: visible ? 16 : 0
                    height: 16
                    visible: trigger.kind === "schedule"
                    sourceSize: Qt.size(32, 32)
                    source: Theme.symbolSource(trigger.open ? "chevron.up" : "chevron.down", Theme.textDim)
                }
                SymbolButton {
                    id: remove
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                    symbol: "xmark.circle.fill"
                    name: qsTr("Remove “%1”").arg(trigger.title)
                    onActivated: section.editor.removeTrigger(trigger.index)
                }
            }
            ScheduleForm {
                width: parent.width
                visible: trigger.open
                editor: section.editor
                row: trigger.index
                weekdays: trigger.weekdays
                time: trigger.time
            }
            CopyableLink {
                width: parent.width
                visible: trigger.link !== ""
                link: trigger.link
                onCopied: section.editor.copy(link)
            }
        }
    }
    HintText {
        width: parent.width
        visible: section.editor.triggers.count === 0 && section.adding === ""
        text: qsTr("Only when you open it.")
    }

    Flow {
        width: parent.width
        visible: section.adding === ""

        TextLink {
            text: qsTr("Time…")
            symbol: "calendar.badge.clock"
            onActivated: {
                section.editor.addSchedule()
                const last = section.editor.triggers.row(section.editor.triggers.count - 1)
                section.openKey = last.kind === "schedule" ? last.key : ""
            }
        }
        TextLink {
            text: qsTr("Display…")
            symbol: "display"
            onActivated: section.adding = "display"
        }
        TextLink {
            text: qsTr("Focus…")
            symbol: "moon"
            onActivated: section.adding = "focus"
        }
    }
    Loader {
        width: parent.width
        active: section.adding !== ""
        visible: active
        sourceComponent: TriggerField {
            editor: section.editor
            kind: section.adding
            onClosed: section.adding = ""
        }
    }
}
