// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Window

// An app's icon, sharp at the display's scale. Until it has arrived its place stays empty, so that
// nothing jumps.
Item {
    id: icon

    required property string source
    required property int size
    property bool darkened: false

    Image {
        anchors.fill: parent
        source: icon.source
        sourceSize: Qt.size(icon.size * Screen.devicePixelRatio, icon.size * Screen.devicePixelRatio)
        asynchronous: true
        smooth: true
        opacity: icon.darkened ? 0.8 : 1
    }
}
