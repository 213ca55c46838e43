// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The open folder over the grid: it grows out of its tile and returns to it.
// Components are not bound here; see TileView.
Item {
    id: panel

    required property Launcher launcher
    required property TileGrid grid

    readonly property TileGrid tileGrid: folderGrid
    readonly property bool open: launcher.openFolder !== ""
    readonly property bool moving: growth.running || folderSpring.running
    // The folder that is shown; kept while the panel goes back into its tile.
    property string shownFolder: ""
    property string shownTitle: ""
    property rect origin: Qt.rect(width / 2, height / 2, 0, 0)

    // Whether a point of the panel lies on the folder's card.
    function holds(at: point): bool {
        return surface.contains(surface.mapFromItem(panel, at))
    }

    visible: growth.value > 0.001

    onOpenChanged: {
        if (open) {
            shownFolder = launcher.openFolder
            const tile = grid.tileRect(shownFolder)
            if (tile.width > 0)
                origin = panel.mapFromItem(grid, tile)
            folderSpring.jump(launcher.folderPage)
        }
        growth.to = open ? 1 : 0
    }

    Connections {
        target: panel.launcher
        function onFolderPageChanged() { folderSpring.to = panel.launcher.folderPage }
        function onFolderTitleChanged() {
            if (panel.open)
                panel.shownTitle = panel.launcher.folderTitle
        }
        function onPresentedChanged() {
            if (!panel.launcher.presented)
                growth.jump(0)
        }
    }

    Spring {
        id: growth
        response: 0.38
        dampingFraction: 0.84
        enabled: !Theme.reduceMotion
    }
    Spring {
        id: folderSpring
        response: 0.45
        dampingFraction: 0.86
        enabled: !Theme.reduceMotion
    }

    MouseArea {
        anchors.fill: parent
        enabled: panel.open
        onClicked: panel.launcher.closeFolder()
        Accessible.ignored: true
    }

    Item {
        id: card

        readonly property int count: Math.max(1, panel.launcher.folderTiles.count)
        // A single row is as wide as it needs to be.
        readonly property int columns: Math.min(panel.launcher.folderColumns, Math.max(3, count))
        readonly property int cell: Math.min(panel.launcher.iconSize + 6 * Theme.unit,
                                             (panel.width - 14 * Theme.unit) / panel.launcher.folderColumns)
        readonly property int rowHeight: Math.min(panel.launcher.iconSize + 7 * Theme.unit,
                                                  (panel.height - 26 * Theme.unit) / panel.launcher.folderRows)
        readonly property int shownRows: Math.min(panel.launcher.folderRows, Math.ceil(count / panel.launcher.folderColumns))

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.horizontalCenterOffset: (panel.origin.x + panel.origin.width / 2 - panel.width / 2) * (1 - growth.value)
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: (panel.origin.y + panel.origin.height / 2 - panel.height / 2) * (1 - growth.value)
        width: columns * cell + 6 * Theme.unit
        height: surface.height
        scale: 0.16 + 0.84 * growth.value
        opacity: Math.min(1, growth.value * 1.6)

        Rectangle {
            id: surface

            anchors { left: parent.left; right: parent.right; top: parent.top }
            height: title.height + card.shownRows * card.rowHeight + 4 * Theme.unit + (pageDots.visible ? 3 * Theme.unit : 0)
            radius: Theme.folderPanelRadius
            color: Theme.panelFill
            border.width: 1
            border.color: Theme.panelBorder

            // Clicks between the icons stay in the folder.
            MouseArea {
                anchors.fill: parent
                Accessible.ignored: true
            }

            Item {
                id: title

                readonly property bool renaming: panel.open && panel.launcher.renaming === panel.launcher.openFolder

                anchors { left: parent.left; right: parent.right; top: parent.top; margins: 2 * Theme.unit }
                height: 6 * Theme.unit

                Text {
                    id: titleText
                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, parent.width - 12 * Theme.unit)
                    visible: !title.renaming
                    text: panel.shownTitle
                    textFormat: Text.PlainText
                    color: Theme.text
                    elide: Text.ElideMiddle
                    maximumLineCount: 1
                    font { pixelSize: Theme.titleSize; weight: Font.DemiBold }
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                HoverHandler {
                    id: titleHover
                    cursorShape: Qt.IBeamCursor
                }
                TapHandler {
                    onTapped: panel.launcher.beginRenaming(panel.launcher.openFolder)
                }
                Rectangle {
                    anchors.fill: titleText
                    anchors.margins: -Theme.unit
                    radius: Theme.unit
                    color: Theme.menuHover
                    visible: titleHover.hovered && !title.renaming
                    z: -1
                }
                Loader {
                    anchors.centerIn: parent
                    active: title.renaming
                    sourceComponent: NameField {
                        name: panel.shownTitle
                        width: Math.min(title.width - 12 * Theme.unit, 420)
                        fontSize: Theme.titleSize
                        fontWeight: Font.DemiBold
                        onCommitted: text => panel.launcher.endRenaming(text)
                        onCancelled: panel.launcher.cancelRenaming()
                    }
                }
                SymbolButton {
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                    symbol: "paintpalette"
                    name: qsTr("Folder style")
                    onActivated: panel.launcher.showMenu(panel.launcher.openFolder)
                }
            }

            Item {
                anchors { left: parent.left; right: parent.right; top: title.bottom }
                height: card.shownRows * card.rowHeight
                clip: panel.launcher.folderPageCount > 1

                TileGrid {
                    id: folderGrid
                    anchors.fill: parent
                    tiles: panel.launcher.folderTiles
                    columns: card.columns
                    rows: card.shownRows
                    sideMargin: 3 * Theme.unit
                    mirrored: panel.launcher.mirrored
                    highlight: panel.open ? panel.launcher.highlight : -1
                    position: folderSpring.value
                    animateMoves: panel.open
                    delegate: TileView {
                        iconSize: panel.launcher.iconSize
                        showLabel: true
                        hint: panel.launcher.hintsMode && panel.open ? panel.launcher.hint(index) : ""
                        hintTyped: panel.launcher.hintBuffer
                        focusShown: true
                        carried: panel.launcher.drag.byPointer && panel.launcher.drag.tileId === tileId
                        lifted: panel.launcher.drag.active && !panel.launcher.drag.byPointer && panel.launcher.drag.tileId === tileId
                        renaming: panel.launcher.renaming === tileId
                        onActivated: newWindow => panel.launcher.activate(tileId, newWindow)
                        onToggled: panel.launcher.toggleSelected(tileId)
                        onMenuRequested: panel.launcher.showMenu(tileId)
                        onRenamed: name => panel.launcher.endRenaming(name)
                        onRenamingCancelled: panel.launcher.cancelRenaming()
                    }
                }
            }

            PageDots {
                id: pageDots
                anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 2 * Theme.unit }
                visible: panel.launcher.folderPageCount > 1
                count: panel.launcher.folderPageCount
                position: folderSpring.value
                onPageRequested: page => panel.launcher.goToFolderPage(page)
            }
        }
    }
}
