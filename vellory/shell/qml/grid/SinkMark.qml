// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The folder's square that a tile becomes while another is held over it. Made when that happens for
// the first time, it comes up as at every later one.
Rectangle {
    id: mark

    required property bool targeted
    property bool up: false
    Component.onCompleted: up = Qt.binding(() => mark.targeted)

    anchors.fill: parent
    anchors.margins: up ? -14 : 0
    radius: width * Theme.folderRadius
    color: Theme.folderFill
    border.width: 2
    border.color: Theme.accent
    opacity: up ? 1 : 0
    visible: opacity > 0
    Behavior on anchors.margins {
        enabled: !Theme.reduceMotion
        SequentialAnimation {
            PauseAnimation { duration: mark.up ? Theme.sinkDelay : 0 }
            NumberAnimation { duration: Theme.hover }
        }
    }
    Behavior on opacity {
        SequentialAnimation {
            PauseAnimation { duration: mark.up ? Theme.sinkDelay : 0 }
            NumberAnimation { duration: Theme.hover }
        }
    }
}
