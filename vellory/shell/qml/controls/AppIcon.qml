// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Window

// An app's icon, sharp at the display's scale. Until it has arrived its place stays empty, so that
// nothing jumps.
Image {
    required property int size
    property bool darkened: false

    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    asynchronous: true
    opacity: darkened ? 0.8 : 1
}
