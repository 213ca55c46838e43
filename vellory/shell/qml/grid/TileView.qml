// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// One tile of a grid: an app's icon or a folder, its name below, and the marks of its state. The
// marks are made when there is something to mark: a page of tiles is there sooner.
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
    required property bool selected
    required property int index
    required property bool highlighted
    required property real rippleDelay
    required property var grid

    property int iconSize: 96
    property bool showLabel: true
    property int labelSize: Theme.labelSize
    property real openClock: 1000
    property string hint: ""
    property string hintTyped: ""

    property bool focusShown: false // the highlight came by keys
    property bool carried: false    // a picture of it follows the pointer; its place is kept
    property bool lifted: false     // it is on its way by keys
    property bool targeted: false   // the dragged tile would go into it
    property bool renaming: false

    signal activated(bool newWindow)
    signal toggled()
    signal menuRequested()
    signal renamed(string name)
    signal renamingCancelled()

    // What of the cell is the tile: icon and name, not the room between tiles.
    readonly property rect body: Qt.rect(target.x, target.y, target.width, target.height)
    // Where the icon stands in the cell.
    readonly property rect faceRect: Qt.rect(content.x + face.x, content.y + face.y, face.width, face.height)

    readonly property bool oneLongWord: title.trim().indexOf(" ") < 0
    // Never wider than its cell, whatever the settings say.
    readonly property int side: Math.max(24, Math.min(iconSize, width - 2 * Theme.unit,
                                                      height - (showLabel ? 5 * Theme.unit : Theme.unit)))
    readonly property int labelLines: height >= side + Theme.labelGap + 2 * labelMetrics.height ? 2 : 1
    // 0 to 1: this tile's part of the opening, later the further it is from where it starts.
    readonly property real appearing: {
        const t = (openClock - rippleDelay * Theme.rippleSpread) / Theme.opening
        const clamped = Math.max(0, Math.min(1, t))
        return 1 - Math.pow(1 - clamped, 3)
    }

    onTargetedChanged: {
        if (targeted)
            sink.active = true
    }

    opacity: carried ? 0 : appearing
    scale: Theme.reduceMotion ? 1 : 0.92 + 0.08 * appearing
    z: lifted ? 1 : 0

    // On its way to its place; pictures wait for it.
    readonly property bool settling: movingAcross.running || movingDown.running

    Behavior on x {
        enabled: tile.grid.moving && !Theme.reduceMotion
        NumberAnimation { id: movingAcross; duration: Theme.makeRoom; easing.type: Easing.OutCubic }
    }
    Behavior on y {
        enabled: tile.grid.moving && !Theme.reduceMotion
        NumberAnimation { id: movingDown; duration: Theme.makeRoom; easing.type: Easing.OutCubic }
    }

    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: isFolder ? qsTr("Folder") : isRunning ? qsTr("Running") : ""
    Accessible.selectable: !isFolder
    Accessible.selected: selected
    Accessible.focusable: true
    Accessible.onPressAction: tile.activated(false)

    FontMetrics {
        id: labelMetrics
        font: label.font
    }

    Rectangle {
        id: target

        anchors.horizontalCenter: parent.horizontalCenter
        y: content.y - Theme.unit
        width: Math.min(tile.width - 4, Math.max(tile.side, label.visible ? label.contentWidth : 0) + 3 * Theme.unit)
        height: tile.side + (label.visible ? Theme.labelGap + label.lineCount * labelMetrics.height : 0) + 2 * Theme.unit
        radius: Theme.highlightRadius
        color: tile.selected ? Theme.selectionFill : tile.highlighted || tile.lifted ? Theme.highlightFill : "transparent"
        border.width: tile.highlighted && tile.focusShown || tile.lifted ? 2 : tile.highlighted || tile.selected ? 1 : 0
        border.color: tile.highlighted && tile.focusShown || tile.lifted || tile.selected ? Theme.accent : Theme.highlightBorder

        HoverHandler {
            id: hover
        }
        TapHandler {
            id: press

            readonly property bool plain: pressed && !(point.pressedButtons & (Qt.MiddleButton | Qt.RightButton))

            gesturePolicy: TapHandler.DragThreshold
            acceptedButtons: Qt.LeftButton | Qt.MiddleButton | Qt.RightButton
            onTapped: (eventPoint, button) => {
                if (button === Qt.RightButton)
                    tile.menuRequested()
                else if (button === Qt.MiddleButton)
                    tile.activated(true)
                else if (press.point.modifiers & Qt.ControlModifier)
                    tile.toggled()
                else
                    tile.activated(false)
            }
            onLongPressed: {
                if (press.point.device.type === PointerDevice.TouchScreen)
                    tile.menuRequested()
            }
        }
    }

    Item {
        id: content

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
            scale: tile.targeted ? 0.82 : tile.lifted ? 1.08 : press.plain ? 0.96 : hover.hovered ? 1.04 : 1
            Behavior on scale {
                SequentialAnimation {
                    PauseAnimation { duration: tile.targeted ? Theme.sinkDelay : 0 }
                    NumberAnimation { duration: Theme.hover; easing.type: Easing.OutCubic }
                }
            }

            // What takes the dragged tile in becomes a folder's square before it does.
            Loader {
                id: sink
                anchors.fill: parent
                active: false
                sourceComponent: SinkMark { targeted: tile.targeted }
            }

            Loader {
                anchors.fill: parent
                sourceComponent: tile.isFolder ? folderFace : appFace
            }

            Component {
                id: appFace
                AppIcon {
                    source: tile.icons.length > 0 ? tile.icons[0] : ""
                    size: tile.side
                    darkened: press.plain
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
                    darkened: press.plain
                }
            }

            Loader {
                anchors { right: parent.right; top: parent.top; margins: -4 }
                active: tile.badge !== ""
                sourceComponent: IconBadge { text: tile.badge }
            }
            Loader {
                anchors { left: parent.left; top: parent.top; margins: -6 }
                active: tile.selected
                sourceComponent: SelectionMark {}
            }
            Loader {
                anchors.centerIn: parent
                active: tile.hint !== "" && tile.hint.startsWith(tile.hintTyped)
                sourceComponent: HintMark { text: tile.hint }
            }
        }

        Text {
            id: label

            anchors { top: face.bottom; topMargin: Theme.labelGap; horizontalCenter: parent.horizontalCenter }
            width: tile.width - Theme.unit
            visible: tile.showLabel
            opacity: tile.renaming ? 0 : 1
            text: tile.title
            textFormat: Text.PlainText
            color: Theme.text
            horizontalAlignment: Text.AlignHCenter
            font { pixelSize: tile.labelSize; weight: Font.Medium }
            wrapMode: tile.oneLongWord || tile.labelLines === 1 ? Text.NoWrap : Text.WordWrap
            elide: tile.oneLongWord ? Text.ElideMiddle : Text.ElideRight
            maximumLineCount: tile.labelLines
            style: Theme.dark ? Text.Raised : Text.Normal
            styleColor: Theme.textShadow
            renderType: Text.QtRendering
        }

        Loader {
            active: tile.renaming
            anchors { top: face.bottom; topMargin: Theme.labelGap - 5; horizontalCenter: parent.horizontalCenter }
            sourceComponent: NameField {
                name: tile.title
                width: tile.width - 4
                onCommitted: text => tile.renamed(text)
                onCancelled: tile.renamingCancelled()
            }
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
}
