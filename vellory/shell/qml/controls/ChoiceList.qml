// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// One of several, a line each; the arrows move the choice.
Column {
    id: list

    property list<string> options
    property int current: 0
    signal chosen(int index)

    activeFocusOnTab: true
    Keys.onUpPressed: chosen(Math.max(0, current - 1))
    Keys.onDownPressed: chosen(Math.min(options.length - 1, current + 1))

    Repeater {
        model: list.options

        Item {
            id: option

            required property string modelData
            required property int index
            readonly property bool current: index === list.current

            width: list.width
            height: Theme.controlHeight

            Accessible.role: Accessible.RadioButton
            Accessible.name: modelData
            Accessible.checkable: true
            Accessible.checked: current
            Accessible.onPressAction: list.chosen(index)

            Rectangle {
                id: mark
                anchors { left: parent.left; verticalCenter: parent.verticalCenter }
                width: Theme.symbol
                height: width
                radius: width / 2
                color: option.current ? Theme.accent : Theme.fieldFill
                border.width: option.current && list.activeFocus ? 2 : 1
                border.color: option.current && list.activeFocus ? Theme.text : Theme.controlBorder
                Rectangle {
                    anchors.centerIn: parent
                    visible: option.current
                    width: 6
                    height: 6
                    radius: 3
                    color: Theme.accentInk
                }
            }
            Text {
                anchors { left: mark.right; leftMargin: 10; right: parent.right; verticalCenter: parent.verticalCenter }
                text: option.modelData
                color: Theme.text
                elide: Text.ElideRight
                font.pixelSize: Theme.bodySize
            }
            TapHandler {
                onTapped: list.chosen(option.index)
            }
        }
    }
}
