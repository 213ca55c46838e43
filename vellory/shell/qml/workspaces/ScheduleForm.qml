// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The weekdays and the time of a schedule.
Column {
    id: form

    required property WorkspaceEditor editor
    required property int row
    required property var weekdays
    required property string time

    spacing: Theme.unit
    leftPadding: Theme.unit
    bottomPadding: Theme.unit

    Row {
        spacing: 4
        Repeater {
            model: form.editor.weekdays()

            Rectangle {
                id: day

                required property var modelData
                readonly property bool on: form.weekdays.indexOf(modelData.day) >= 0

                width: (form.width - 2 * Theme.unit - 6 * 4) / 7
                height: Theme.controlHeight
                radius: 10
                color: on ? Theme.accent : Theme.fieldFill
                border.width: activeFocus ? 2 : on ? 0 : 1
                border.color: activeFocus ? (on ? Theme.text : Theme.accent) : Theme.fieldBorder
                activeFocusOnTab: true

                Accessible.role: Accessible.CheckBox
                Accessible.name: modelData.fullName
                Accessible.checkable: true
                Accessible.checked: on
                Accessible.focusable: true
                Accessible.onPressAction: toggle()
                Accessible.onToggleAction: toggle()
                Keys.onSpacePressed: toggle()
                Keys.onReturnPressed: toggle()

                function toggle(): void {
                    form.editor.toggleWeekday(form.row, modelData.day)
                }

                Text {
                    anchors.centerIn: parent
                    width: parent.width - 4
                    horizontalAlignment: Text.AlignHCenter
                    text: day.modelData.name
                    elide: Text.ElideRight
                    color: day.on ? Theme.accentInk : Theme.text
                    font.pixelSize: Theme.labelSize
                }
                TapHandler {
                    gesturePolicy: TapHandler.ReleaseWithinBounds
                    onTapped: day.toggle()
                }
            }
        }
    }
    Row {
        spacing: Theme.unit

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("at")
            color: Theme.text
            font.pixelSize: Theme.bodySize
        }
        TextBox {
            id: clock
            width: 88
            name: qsTr("Time")
            value: form.time
            placeholder: "09:00"
            onEdited: wrong = false
            onCommitted: text => wrong = !form.editor.setTime(form.row, text)
            onCancelled: wrong = false
        }
        HintText {
            anchors.verticalCenter: parent.verticalCenter
            visible: clock.wrong
            color: Theme.warning
            text: qsTr("A time such as 09:30.")
        }
    }
}
