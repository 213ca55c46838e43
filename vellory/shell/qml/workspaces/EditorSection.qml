// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A part of the editor under its heading.
Column {
    id: section

    required property string title
    default property alias content: body.data

    spacing: Theme.unit - 2

    Text {
        width: parent.width
        text: section.title
        color: Theme.text
        elide: Text.ElideRight
        font { pixelSize: Theme.bodySize; weight: Font.DemiBold }
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Column {
        id: body
        width: parent.width
        spacing: Theme.unit - 2
    }
}
