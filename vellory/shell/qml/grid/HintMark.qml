// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The letters that open a tile.
Rectangle {
    property alias text: letters.text

    width: letters.implicitWidth + 16
    height: 28
    radius: 8
    color: Theme.hintFill

    Text {
        id: letters
        anchors.centerIn: parent
        color: Theme.hintText
        font { pixelSize: 15; weight: Font.Bold; letterSpacing: 1 }
    }
}
