// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The quiet heading of a section of search results.
Item {
    id: heading

    required property SearchCell cell

    Text {
        anchors { left: parent.left; right: parent.right; leftMargin: Theme.unit; rightMargin: Theme.unit; verticalCenter: parent.verticalCenter }
        text: heading.cell.title
        textFormat: Text.PlainText
        color: Theme.textDim
        font { pixelSize: Theme.labelSize; weight: Font.Medium }
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
