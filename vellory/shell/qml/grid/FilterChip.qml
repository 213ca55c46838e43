// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// Says what narrows the grid, and shows everything at a click until the launcher is hidden.
Rectangle {
    id: chip

    required property GridRestriction restriction

    visible: restriction.name !== ""
    width: content.width + 4 * Theme.unit
    height: Theme.controlHeight
    radius: height / 2
    color: hover.hovered ? Theme.highlightFill : Theme.fieldFill
    border.width: 1
    border.color: Theme.fieldBorder

    Accessible.role: Accessible.Button
    Accessible.name: restriction.name + ": " + action.text
    Accessible.focusable: true
    Accessible.onPressAction: chip.toggle()

    function toggle(): void {
        restriction.lifted = !restriction.lifted
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: Theme.unit

        Text {
            width: Math.min(implicitWidth, 20 * Theme.unit)
            text: chip.restriction.name
            textFormat: Text.PlainText
            color: chip.restriction.lifted ? Theme.textDim : Theme.text
            font { pixelSize: Theme.labelSize; weight: Font.DemiBold; strikeout: chip.restriction.lifted }
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        Text {
            id: action
            text: chip.restriction.lifted ? qsTr("Filter again") : qsTr("Show all apps")
            color: Theme.textDim
            font.pixelSize: Theme.labelSize
        }
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: chip.toggle()
    }
}
