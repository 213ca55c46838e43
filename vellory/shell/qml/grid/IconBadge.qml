// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// What an app has to say on its icon, such as how many messages wait.
Rectangle {
    id: badge

    property alias text: label.text

    visible: text !== ""
    width: Math.max(height, label.width + 12)
    height: Theme.badgeHeight
    radius: height / 2
    color: Theme.badgeFill

    Text {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, Theme.badgeTextWidth)
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.badgeInk
        font { pixelSize: 12; weight: Font.DemiBold }
    }
}
