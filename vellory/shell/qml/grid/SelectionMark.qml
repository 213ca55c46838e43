// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The tick on a tile that is selected.
Rectangle {
    width: Theme.badgeHeight
    height: width
    radius: width / 2
    color: Theme.accent
    border { width: 2; color: Theme.accentInk }

    Image {
        anchors.centerIn: parent
        width: 12
        height: 12
        sourceSize: Qt.size(24, 24)
        source: Theme.symbolSource("checkmark", Theme.accentInk)
    }
}
