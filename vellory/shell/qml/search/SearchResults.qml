// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// What the typed text finds, best first: a sum, apps by name, apps by what they do, or emoji.
// Components are not bound here: Qt 6.4 refuses to load a bound one from a delegate made in C++.
Item {
    id: results

    required property Launcher launcher

    readonly property Search search: launcher.search
    // Where the results end, or the view if they go on below it.
    readonly property real end: Math.min(cells.implicitHeight, height)

    Binding { target: results.search; property: "matchColor"; value: Theme.text }
    Connections {
        target: results.launcher
        function onQueryChanged() { flickable.contentY = 0 }
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: width
        contentHeight: cells.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.VerticalFlick
        clip: contentHeight > height

        SearchGrid {
            id: cells

            width: flickable.width
            height: implicitHeight
            search: results.search
            columns: results.launcher.columns
            sideMargin: Theme.sideMargin(width)
            appHeight: Math.floor(flickable.height / Math.max(1, results.launcher.rows))
            emojiHeight: Theme.emojiHeight
            sumHeight: Theme.sumHeight
            headingHeight: Theme.headingHeight
            mirrored: results.launcher.mirrored
            viewTop: flickable.contentY
            viewHeight: flickable.height
            warm: results.launcher.presented

            appDelegate: ResultTile {
                iconSize: results.launcher.iconSize
                showLabel: results.launcher.showLabels
                renaming: tileId !== "" && results.launcher.renaming === tileId
                onActivated: newWindow => results.search.activate(cell.cellId, newWindow)
                onMenuRequested: results.launcher.showMenu(tileId)
                onRenamed: name => results.launcher.endRenaming(name)
                onRenamingCancelled: results.launcher.cancelRenaming()
            }
            emojiDelegate: EmojiTile {
                onActivated: results.search.activate(cell.cellId, false)
            }
            sumDelegate: SumCard {
                onActivated: results.search.activate(cell.cellId, false)
            }
            headingDelegate: ResultHeading {}

            onHighlightRectChanged: {
                const top = highlightRect.y
                const bottom = top + highlightRect.height
                if (top < flickable.contentY)
                    flickable.contentY = top
                else if (bottom > flickable.contentY + flickable.height)
                    flickable.contentY = bottom - flickable.height
            }
        }
    }

    Loader {
        anchors.centerIn: parent
        active: results.launcher.searching && results.search.empty
        sourceComponent: nothingFound
    }
    Component {
        id: nothingFound
        EmptyState {
            title: results.search.asking ? qsTr("Ask is not here yet")
                 : results.search.listsEmoji ? qsTr("No matching emoji") : qsTr("No matching apps")
            text: results.search.asking
                  ? qsTr("A text that begins with “?” is kept for it. Leave out the “?” to search.")
                  : qsTr("Try what the app does (“edit photos”), maths (“12*7”) or “:” for emoji")
        }
    }
}
