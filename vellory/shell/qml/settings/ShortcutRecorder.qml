// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// Takes the next keys that are pressed as a workspace's shortcut. Escape leaves the old one.
Item {
    id: recorder

    required property WorkspaceEditor editor
    property bool recording: false
    property bool refusedKeys: false

    implicitHeight: field.height + (hint.visible ? hint.height + 4 : 0)

    function start(): void {
        refusedKeys = false
        recording = true
        field.forceActiveFocus()
    }

    Rectangle {
        id: field

        anchors { left: parent.left; right: clear.visible ? clear.left : parent.right; rightMargin: clear.visible ? 4 : 0; top: parent.top }
        height: Theme.controlHeight
        radius: 10
        color: Theme.fieldFill
        border.width: activeFocus || recorder.recording ? 2 : 1
        border.color: activeFocus || recorder.recording ? Theme.accent : Theme.fieldBorder
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Shortcut: %1").arg(label.text)
        Accessible.focusable: true
        Accessible.onPressAction: recorder.start()

        onActiveFocusChanged: {
            if (!activeFocus)
                recorder.recording = false
        }
        Keys.onShortcutOverride: event => event.accepted = recorder.recording
        Keys.onPressed: event => {
            if (!recorder.recording) {
                event.accepted = event.key === Qt.Key_Return || event.key === Qt.Key_Space
                if (event.accepted)
                    recorder.start()
                return
            }
            event.accepted = true
            if (event.key === Qt.Key_Escape && event.modifiers === Qt.NoModifier) {
                recorder.recording = false
            } else if (recorder.editor.setShortcut(event.key, event.modifiers)) {
                recorder.refusedKeys = false
                recorder.recording = false
            } else {
                // A modifier that goes down first is no mistake.
                recorder.refusedKeys = event.text !== ""
            }
        }

        Text {
            id: label
            anchors { left: parent.left; right: parent.right; leftMargin: 12; rightMargin: 12; verticalCenter: parent.verticalCenter }
            text: recorder.recording ? qsTr("Press the keys…")
                                     : recorder.editor.shortcut !== "" ? recorder.editor.shortcut : qsTr("None: click to record one")
            elide: Text.ElideRight
            color: recorder.recording || recorder.editor.shortcut === "" ? Theme.textDim : Theme.text
            font.pixelSize: Theme.bodySize
        }
        TapHandler {
            onTapped: recorder.start()
        }
    }
    SymbolButton {
        id: clear
        anchors { right: parent.right; top: parent.top }
        visible: recorder.editor.shortcut !== "" && !recorder.recording
        symbol: "xmark.circle.fill"
        name: qsTr("Remove shortcut")
        onActivated: recorder.editor.clearShortcut()
    }
    HintText {
        id: hint
        anchors { left: parent.left; right: parent.right; top: field.bottom; topMargin: 4 }
        visible: text !== ""
        color: Theme.warning
        text: recorder.recording && recorder.refusedKeys ? qsTr("Hold Ctrl, Alt or Meta with the key.")
              : !recorder.recording && recorder.editor.shortcutRefused ? qsTr("Another program has these keys. Choose others.") : ""
    }
}
