// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A calm sentence where there is nothing to show, with a hint under it.
Column {
    required property string title
    required property string text

    spacing: Theme.unit

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: parent.title
        color: Theme.text
        font { pixelSize: 17; weight: Font.DemiBold }
    }
    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: parent.text
        color: Theme.textDim
        font.pixelSize: Theme.bodySize
    }
}
