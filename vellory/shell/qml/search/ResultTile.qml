// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// An app among the search results, as large as on the grid. Its matched letters stand out.
Item {
    id: tile

    required property SearchCell cell

    readonly property string tileId: cell.cellId // as on the grid
    property int iconSize: 96
    property bool showLabel: true

    property bool renaming: false

    signal activated(bool newWindow)
    signal menuRequested()
    signal renamed(string name)
    signal renamingCancelled()

    readonly property bool oneLongWord: cell.title.trim().indexOf(" ") < 0
    // As on the grid: never wider than its cell.
    readonly property int side: Math.max(24, Math.min(iconSize, width - 2 * Theme.unit,
                                                      height - (showLabel ? 5 * Theme.unit : Theme.unit)))
    readonly property int labelLines: height >= side + Theme.labelGap + 2 * labelMetrics.height ? 2 : 1

    Accessible.role: Accessible.Button
    Accessible.name: cell.title
    Accessible.description: cell.isRunning ? qsTr("Running") : ""
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
        visible: tile.cell.highlighted
    }

    Item {
        id: body

        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.round((parent.height - height) / 2)
        width: parent.width
        height: tile.side + (label.visible ? Theme.labelGap + 1.5 * labelMetrics.height : 0)

        AppIcon {
            id: face

            anchors.horizontalCenter: parent.horizontalCenter
            width: tile.side
            height: tile.side
            source: tile.cell.picture
            size: tile.side
            darkened: press.pressed
            scale: press.pressed ? 0.96 : hover.hovered ? 1.04 : 1
            Behavior on scale { NumberAnimation { duration: Theme.hover; easing.type: Easing.OutCubic } }
        }

        IconBadge {
            anchors { right: face.right; top: face.top; margins: -4 }
            text: tile.cell.badge
        }

        Text {
            id: label

            anchors { top: face.bottom; topMargin: Theme.labelGap; horizontalCenter: parent.horizontalCenter }
            width: tile.width - Theme.unit
            visible: tile.showLabel
            opacity: tile.renaming ? 0 : 1
            text: tile.cell.marked !== "" ? tile.cell.marked : tile.cell.title
            textFormat: tile.cell.marked !== "" ? Text.StyledText : Text.PlainText
            color: tile.cell.marked !== "" ? Theme.textUnmatched : Theme.text
            horizontalAlignment: Text.AlignHCenter
            font { pixelSize: Theme.labelSize; weight: Font.Medium }
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
                name: tile.cell.title
                width: tile.width - 4
                onCommitted: text => tile.renamed(text)
                onCancelled: tile.renamingCancelled()
            }
        }

        Rectangle {
            visible: tile.cell.isRunning
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
        onTapped: tile.activated((press.point.modifiers & Qt.ControlModifier) !== 0)
    }
    TapHandler {
        acceptedButtons: Qt.MiddleButton
        onTapped: tile.activated(true)
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: tile.menuRequested()
    }
}
