// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// Adds a link that is typed or pasted.
Item {
    id: field

    required property WorkspaceEditor editor
    property bool wrong: false
    signal closed()

    implicitHeight: box.height + (hint.visible ? hint.height + 4 : 0)

    function add(): void {
        if (box.text.trim() === "")
            return
        wrong = !editor.addLink(box.text)
        if (!wrong)
            closed()
    }

    TextBox {
        id: box
        anchors { left: parent.left; right: add.left; rightMargin: Theme.unit }
        name: qsTr("Link")
        placeholder: "https://…"
        wrong: field.wrong
        onEdited: field.wrong = false
        onKeyPressed: event => {
            if (event.key === Qt.Key_Escape) {
                event.accepted = true
                field.closed()
            }
        }
        draft: true
        onCommitted: field.add()
        Component.onCompleted: takeFocus()
    }
    PanelButton {
        id: add
        anchors { right: close.left }
        text: qsTr("Add")
        primary: true
        onActivated: field.add()
    }
    SymbolButton {
        id: close
        anchors { right: parent.right }
        symbol: "xmark.circle.fill"
        name: qsTr("Cancel")
        onActivated: field.closed()
    }
    HintText {
        id: hint
        anchors { left: parent.left; right: parent.right; top: box.bottom; topMargin: 4 }
        visible: field.wrong
        color: Theme.warning
        text: qsTr("This is no link. Links begin like “https://” or “mailto:”.")
    }
}
