// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The earlier states of the grid: when and why each was left, and what it looked like.
Panel {
    id: panel

    required property Launcher launcher
    readonly property LayoutHistory history: launcher.history

    title: qsTr("Layout history")
    cardWidth: 960
    cardHeight: 600
    onClosed: launcher.closePanel()

    function restore(): void {
        if (history.restore())
            launcher.closePanel()
    }

    Keys.onUpPressed: history.current = Math.max(0, history.current - 1)
    Keys.onDownPressed: history.current += 1
    Keys.onReturnPressed: restore()
    Keys.onEnterPressed: restore()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            history.current = 0
        else if (event.key === Qt.Key_End)
            history.current = history.steps.length - 1
        else
            event.accepted = event.text !== "" && event.key !== Qt.Key_Tab
    }

    EmptyState {
        anchors.centerIn: parent
        visible: panel.history.steps.length === 0
        title: qsTr("Nothing to go back to yet")
        text: qsTr("Every change you make to the grid is kept here, the last %1 of them.").arg(panel.history.kept)
    }

    ListView {
        id: list

        anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
        width: Math.min(300, parent.width * 0.36)
        visible: count > 0
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: panel.history.steps
        currentIndex: panel.history.current
        highlightMoveDuration: Theme.hover
        Accessible.role: Accessible.List
        Accessible.name: panel.title

        delegate: Rectangle {
            id: step

            required property int index
            required property var modelData
            readonly property bool chosen: index === panel.history.current

            width: ListView.view.width - Theme.unit
            height: 52
            radius: 10
            color: chosen ? Theme.accent : hover.hovered ? Theme.menuHover : "transparent"
            Accessible.role: Accessible.ListItem
            Accessible.name: modelData.reason + ", " + modelData.when
            Accessible.selected: chosen
            Accessible.onPressAction: panel.history.current = index

            Text {
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12; topMargin: 8 }
                text: step.modelData.reason
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: step.chosen ? Theme.accentInk : Theme.text
                font.pixelSize: Theme.bodySize
            }
            Text {
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 12; bottomMargin: 8 }
                text: step.modelData.when
                elide: Text.ElideRight
                color: step.chosen ? Theme.accentInkDim : Theme.textDim
                font.pixelSize: Theme.smallSize
            }
            HoverHandler { id: hover }
            TapHandler {
                onTapped: panel.history.current = step.index
                onDoubleTapped: panel.restore()
            }
        }
    }

    Rectangle {
        id: picture

        anchors { left: list.right; right: parent.right; top: parent.top; bottom: buttons.top; leftMargin: 2 * Theme.unit; bottomMargin: 2 * Theme.unit }
        visible: list.visible
        radius: 14
        color: Theme.menuHover
        clip: true

        TileGrid {
            id: preview
            anchors { fill: parent; margins: Theme.unit; bottomMargin: dots.visible ? 3 * Theme.unit : Theme.unit }
            tiles: panel.history.preview
            columns: panel.launcher.columns
            rows: panel.launcher.rows
            sideMargin: Theme.unit
            mirrored: panel.launcher.mirrored
            animateMoves: true
            delegate: TileView {
                enabled: false
                iconSize: 40
                showLabel: height > 76
                labelSize: 10
            }
            Accessible.ignored: true
        }
        PageDots {
            id: dots
            anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: Theme.unit }
            visible: count > 1
            count: preview.pageCount
            position: preview.position
            onPageRequested: page => preview.position = page
        }
        Connections {
            target: panel.history
            function onCurrentChanged() { preview.position = 0 }
        }
        Text {
            anchors.centerIn: parent
            visible: panel.history.preview.count === 0
            text: qsTr("This state cannot be read any more.")
            color: Theme.textDim
            font.pixelSize: Theme.bodySize
        }
    }

    Row {
        id: buttons
        anchors { right: parent.right; bottom: parent.bottom }
        visible: list.visible
        spacing: Theme.unit
        layoutDirection: Qt.LeftToRight

        PanelButton {
            text: qsTr("Restore")
            primary: true
            enabled: panel.history.preview.count > 0
            onActivated: panel.restore()
        }
    }
}
