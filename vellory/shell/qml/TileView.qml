// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// One tile of a grid: an app's icon or a folder, its name below, and the marks of its state.
// Components are not bound here: Qt 6.4 refuses to load a bound one from a delegate made in C++.
Item {
    id: tile

    required property string tileId
    required property string title
    required property bool isFolder
    required property var icons
    required property string tint
    required property string emoji
    required property string cover
    required property bool isRunning
    required property string badge
    required property int index
    required property bool highlighted
    required property real rippleDelay
    required property var grid

    property int iconSize: 96
    property bool showLabel: true
    property real openClock: 1000
    property string hint: ""
    property string hintTyped: ""

    signal activated(bool newWindow)

    readonly property bool oneLongWord: title.trim().indexOf(" ") < 0
    // Never wider than its cell, whatever the settings say.
    readonly property int side: Math.max(24, Math.min(iconSize, width - 2 * Theme.unit,
                                                      height - (showLabel ? 5 * Theme.unit : Theme.unit)))
    readonly property int labelLines: height >= side + Theme.labelGap + 2.5 * labelMetrics.height ? 2 : 1
    // 0 to 1: this tile's part of the opening, later the further it is from where it starts.
    readonly property real appearing: {
        const t = (openClock - rippleDelay * Theme.rippleSpread) / Theme.opening
        const clamped = Math.max(0, Math.min(1, t))
        return 1 - Math.pow(1 - clamped, 3)
    }

    opacity: appearing
    scale: Theme.reduceMotion ? 1 : 0.92 + 0.08 * appearing

    Behavior on x {
        enabled: tile.grid.moving && !Theme.reduceMotion
        NumberAnimation { duration: Theme.makeRoom; easing.type: Easing.OutCubic }
    }
    Behavior on y {
        enabled: tile.grid.moving && !Theme.reduceMotion
        NumberAnimation { duration: Theme.makeRoom; easing.type: Easing.OutCubic }
    }

    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: isFolder ? qsTr("Folder") : isRunning ? qsTr("Running") : ""
    Accessible.focusable: true
    Accessible.onPressAction: tile.activated(false)

    FontMetrics {
        id: labelMetrics
        font: label.font
    }

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        y: body.y - Theme.unit
        width: Math.min(tile.width - 4, Math.max(tile.side, label.visible ? label.contentWidth : 0) + 3 * Theme.unit)
        height: tile.side + (label.visible ? Theme.labelGap + label.lineCount * labelMetrics.height : 0) + 2 * Theme.unit
        radius: Theme.highlightRadius
        color: Theme.highlightFill
        border.width: 1
        border.color: Theme.highlightBorder
        visible: tile.highlighted
    }

    Item {
        id: body

        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.round((parent.height - height) / 2)
        width: parent.width
        // A line and a half whatever the name needs, so that the icons of a row stand level and a
        // second line has its room below.
        height: tile.side + (label.visible ? Theme.labelGap + 1.5 * labelMetrics.height : 0)

        Item {
            id: face

            anchors.horizontalCenter: parent.horizontalCenter
            width: tile.side
            height: tile.side
            scale: press.pressed ? 0.96 : hover.hovered ? 1.04 : 1
            Behavior on scale { NumberAnimation { duration: Theme.hover; easing.type: Easing.OutCubic } }

            Loader {
                anchors.fill: parent
                sourceComponent: tile.isFolder ? folderFace : appFace
            }

            Component {
                id: appFace
                AppIcon {
                    source: tile.icons.length > 0 ? tile.icons[0] : ""
                    size: tile.side
                    darkened: press.pressed
                }
            }
            Component {
                id: folderFace
                FolderFace {
                    icons: tile.icons
                    tint: tile.tint
                    emoji: tile.emoji
                    cover: tile.cover
                    size: tile.side
                    darkened: press.pressed
                }
            }

            Rectangle {
                visible: tile.badge !== ""
                anchors { right: parent.right; top: parent.top; margins: -4 }
                width: Math.max(height, badgeText.implicitWidth + 12)
                height: Theme.badgeHeight
                radius: height / 2
                color: Theme.badgeFill
                Text {
                    id: badgeText
                    anchors.centerIn: parent
                    text: tile.badge.length > 5 ? tile.badge.slice(0, 4) + "…" : tile.badge
                    textFormat: Text.PlainText
                    color: "white"
                    font { pixelSize: 12; weight: Font.DemiBold }
                }
            }

            Rectangle {
                visible: tile.hint !== "" && tile.hint.startsWith(tile.hintTyped)
                anchors.centerIn: parent
                width: hintText.implicitWidth + 16
                height: 28
                radius: 8
                color: Theme.hintFill
                Text {
                    id: hintText
                    anchors.centerIn: parent
                    text: tile.hint
                    color: Theme.hintText
                    font { pixelSize: 15; weight: Font.Bold; letterSpacing: 1 }
                }
            }
        }

        Text {
            id: label

            anchors { top: face.bottom; topMargin: Theme.labelGap; horizontalCenter: parent.horizontalCenter }
            width: tile.width - Theme.unit
            visible: tile.showLabel
            text: tile.title
            textFormat: Text.PlainText
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            font { pixelSize: Theme.labelSize; weight: Font.Medium }
            wrapMode: tile.oneLongWord || tile.labelLines === 1 ? Text.NoWrap : Text.WordWrap
            elide: tile.oneLongWord ? Text.ElideMiddle : Text.ElideRight
            maximumLineCount: tile.labelLines
            style: Theme.dark ? Text.Raised : Text.Normal
            styleColor: Theme.textShadow
            renderType: Text.QtRendering
        }

        Rectangle {
            visible: tile.isRunning
            anchors { top: label.visible ? label.bottom : face.bottom; topMargin: 3; horizontalCenter: parent.horizontalCenter }
            width: Theme.runningDotSize
            height: width
            radius: width / 2
            color: Theme.runningDot
        }
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        id: press
        gesturePolicy: TapHandler.DragThreshold
        acceptedButtons: Qt.LeftButton
        onTapped: eventPoint => tile.activated((press.point.modifiers & Qt.ControlModifier) !== 0)
    }
    TapHandler {
        acceptedButtons: Qt.MiddleButton
        onTapped: tile.activated(true)
    }
}
