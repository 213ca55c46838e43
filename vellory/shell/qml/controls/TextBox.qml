// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A field for a line of text. What was typed counts when the user leaves it or presses Return;
// Escape puts back what was there. A draft counts with Return only, and stays when it is left.
Rectangle {
    id: box

    property string value: ""
    required property string name // for assistive technology
    property string placeholder: ""
    property bool wrong: false
    property bool draft: false
    property alias text: input.text
    property alias fontSize: input.font.pixelSize
    property alias fontWeight: input.font.weight
    readonly property bool editing: input.activeFocus
    // What is typed is told at once; it is up to `committed` to keep it.
    signal edited(string text)
    signal committed(string text)
    signal cancelled()
    signal keyPressed(var event)

    function takeFocus(): void {
        input.forceActiveFocus()
        input.selectAll()
    }
    function clear(): void {
        input.text = ""
    }

    onValueChanged: {
        if (!input.activeFocus)
            input.text = value
    }

    height: Theme.controlHeight
    radius: 10
    color: Theme.fieldFill
    border.width: input.activeFocus ? 2 : 1
    border.color: wrong ? Theme.badgeFill : input.activeFocus ? Theme.accent : Theme.fieldBorder

    TextInput {
        id: input

        anchors { left: parent.left; right: parent.right; leftMargin: 12; rightMargin: 12; verticalCenter: parent.verticalCenter }
        text: box.value
        clip: true
        activeFocusOnTab: true
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentInk
        selectByMouse: true
        maximumLength: 4000
        font.pixelSize: Theme.bodySize
        onTextEdited: box.edited(text)
        onActiveFocusChanged: {
            if (activeFocus || box.draft)
                return
            if (text !== box.value)
                box.committed(text)
            text = box.value
        }
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
                box.committed(text)
                event.accepted = true
            } else if (event.key === Qt.Key_Escape && !box.draft && text !== box.value) {
                text = box.value
                box.cancelled()
                event.accepted = true
            } else {
                event.accepted = false
                box.keyPressed(event)
            }
        }

        Accessible.role: Accessible.EditableText
        Accessible.name: box.name

        Text {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
            visible: input.text === "" && input.preeditText === ""
            text: box.placeholder
            color: Theme.textDim
            font: input.font
            elide: Text.ElideRight
        }
    }
}
