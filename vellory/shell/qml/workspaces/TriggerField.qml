// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Adds a display or a Focus that opens the workspace: one of those there are, or any that is typed.
Column {
    id: field

    required property WorkspaceEditor editor
    required property string kind
    readonly property bool isFocus: kind === "focus"
    readonly property var offered: isFocus ? editor.focusModes() : editor.displayNames()
    signal closed()

    spacing: Theme.unit

    function add(text: string): void {
        if (text.trim() === "")
            return
        if (isFocus)
            editor.addFocus(text)
        else
            editor.addDisplay(text)
        closed()
    }

    HintText {
        width: parent.width
        visible: field.offered.length > 0
        text: field.isFocus ? field.editor.focusModesText : qsTr("Connected now")
    }
    Flow {
        width: parent.width
        spacing: Theme.unit
        visible: field.offered.length > 0
        Repeater {
            model: field.offered
            PanelButton {
                required property string modelData
                text: modelData
                width: Math.min(implicitWidth, field.width)
                onActivated: field.add(modelData)
            }
        }
    }
    Item {
        width: parent.width
        height: box.height

        TextBox {
            id: box
            anchors { left: parent.left; right: add.left; rightMargin: Theme.unit }
            draft: true
            name: field.isFocus ? qsTr("Name of the Focus") : qsTr("Part of the display's name")
            placeholder: name
            onCommitted: text => field.add(text)
            onKeyPressed: event => {
                if (event.key === Qt.Key_Escape) {
                    event.accepted = true
                    field.closed()
                }
            }
            Component.onCompleted: takeFocus()
        }
        PanelButton {
            id: add
            anchors.right: close.left
            text: qsTr("Add")
            primary: true
            onActivated: field.add(box.text)
        }
        SymbolButton {
            id: close
            anchors.right: parent.right
            symbol: "xmark.circle.fill"
            name: qsTr("Cancel")
            onActivated: field.closed()
        }
    }
    HintText {
        width: parent.width
        visible: field.isFocus
        text: field.editor.automationText
    }
}
