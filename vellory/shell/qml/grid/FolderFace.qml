// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// A closed folder: its cover, or its first nine icons on a rounded square in its tint.
Item {
    id: face

    required property var icons
    required property string tint
    required property string emoji
    required property string cover
    required property int size
    property bool darkened: false

    // A cover that cannot be read leaves the icons in their place.
    readonly property bool covered: cover !== "" && coverImage.status !== Image.Error
                                    && !(coverImage.status === Image.Ready && coverImage.implicitWidth <= 0)
    readonly property int inset: Math.round(size * 0.11)
    readonly property int gap: Math.max(2, Math.round(size * 0.05))
    readonly property int small: Math.floor((size - 2 * inset - 2 * gap) / 3)

    opacity: darkened ? 0.8 : 1

    Rectangle {
        id: plate
        anchors.fill: parent
        anchors.margins: Math.round(face.size * 0.03)
        radius: width * Theme.folderRadius
        color: Theme.folderFill
        border.width: 1
        border.color: Theme.highlightBorder

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            visible: face.tint !== ""
            color: Theme.tint(face.tint)
            opacity: 0.35
        }
    }

    Image {
        id: coverImage

        anchors.fill: plate
        anchors.margins: 2
        visible: face.covered
        source: face.cover
        sourceSize: Qt.size(face.size * 2, face.size * 2)
        asynchronous: true
        fillMode: Image.PreserveAspectCrop
    }

    Grid {
        anchors.centerIn: parent
        visible: !face.covered
        width: 3 * face.small + 2 * face.gap
        height: width
        columns: 3
        spacing: face.gap
        Repeater {
            model: face.icons
            AppIcon {
                required property string modelData
                source: modelData
                size: face.small
                width: face.small
                height: face.small
            }
        }
    }

    Text {
        anchors { right: parent.right; bottom: parent.bottom; margins: -2 }
        visible: face.emoji !== ""
        text: face.emoji
        textFormat: Text.PlainText
        font.pixelSize: Math.round(face.size * 0.25)
    }
}
