// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A name that is being edited in its place: Return keeps it, Escape leaves it as it was, and so
// does Return on an empty field. Going elsewhere keeps it.
Rectangle {
    id: field

    required property string name
    property int fontSize: Theme.labelSize
    property int fontWeight: Font.Medium

    signal committed(string text)
    signal cancelled()

    // It may arrive after the field.
    onNameChanged: Qt.callLater(input.selectAll)

    implicitHeight: input.implicitHeight + 10
    radius: 8
    color: Theme.editFill
    border { width: 2; color: Theme.accent }

    TextInput {
        id: input

        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 8 }
        text: field.name
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentInk
        selectByMouse: true
        clip: true
        horizontalAlignment: TextInput.AlignHCenter
        font { pixelSize: field.fontSize; weight: field.fontWeight }
        maximumLength: 1000

        property bool done: false
        function finish(keep: bool): void {
            if (done)
                return
            done = true
            if (keep)
                field.committed(text)
            else
                field.cancelled()
        }

        Accessible.role: Accessible.EditableText
        Accessible.name: qsTr("Name")
        Keys.onReturnPressed: finish(true)
        Keys.onEnterPressed: finish(true)
        Keys.onTabPressed: finish(true)
        Keys.onEscapePressed: finish(false)
        // Nothing typed here reaches the grid.
        Keys.onPressed: event => event.accepted = false
        onActiveFocusChanged: {
            if (!activeFocus)
                finish(true)
        }
        Component.onCompleted: {
            forceActiveFocus()
            selectAll()
        }
    }
}
