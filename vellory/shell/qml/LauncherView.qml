// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The launcher over the whole display: backdrop, search field, grid, folder panel and notices.
// Components are not bound here: Qt 6.4 refuses to load a bound one in a Loader.
FocusScope {
    id: view

    required property Launcher launcher
    required property Suggestions suggestions
    required property Settings settings
    required property Workspaces workspaces

    // Drawn without graphics hardware: scaling the whole stage would cost more than it shows.
    readonly property bool softwareDrawn: GraphicsInfo.api === GraphicsInfo.Software
    readonly property bool folderOpen: launcher.openFolder !== ""
    // The workspaces stand beside the grid, which keeps the rest of the width.
    readonly property bool docked: launcher.panel === Launcher.Workspaces
    readonly property real dockRoom: docked ? dock.width + 2 * Theme.unit : 0
    // A menu or panel stands over everything. What lies below must not hear taps: handlers get them
    // also when something above has taken them.
    readonly property bool covered: contextMenu.open || (launcher.panel !== Launcher.None && !docked)
    // The pointer went down on something that is dragged or scrolled by itself.
    property bool pressedBeside: false
    // Something on the screen is still on its way; pictures wait for it.
    readonly property bool moving: opening.running || pageSpring.running || folderPanel.moving || stageFade.running || panels.moving || dock.moving

    focus: true
    LayoutMirroring.enabled: launcher.mirrored
    LayoutMirroring.childrenInherit: true

    // The keys go back to the grid, where they search.
    function takeFocus(): void {
        searchField.takeFocus()
    }

    // A key that whatever has the focus made nothing of: it searches or moves on the grid, as ever.
    Keys.onPressed: event => {
        if (covered || event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab)
            return
        event.accepted = suggestions.handleKey(event.key, event.modifiers, event.text)
        if (event.accepted)
            takeFocus()
    }

    Binding { target: Theme; property: "dark"; value: view.launcher.dark }
    Binding { target: Theme; property: "reduceMotion"; value: view.launcher.reduceMotion }

    // How far the opening has come, in milliseconds; every tile takes its own part of it.
    property real openClock: Theme.opening + Theme.rippleSpread
    NumberAnimation on openClock {
        id: opening
        running: false
        from: 0
        to: Theme.opening + Theme.rippleSpread
        duration: Theme.opening + Theme.rippleSpread
    }

    Connections {
        target: view.launcher
        function onPresentedChanged() {
            if (view.launcher.presented) {
                pageSpring.jump(view.launcher.position)
                opening.restart()
                searchField.takeFocus()
            }
        }
        function onRenamingChanged() {
            if (view.launcher.renaming === "" && !contextMenu.open)
                view.takeFocus()
        }
        function onPanelChanged() {
            if (view.launcher.panel === Launcher.None)
                view.takeFocus()
        }
        function onMenuRequested(index: int) {
            const shown = view.launcher.openFolder !== "" ? folderPanel.tileGrid : grid
            const id = index < 0 ? view.launcher.openFolder : shown.tileIdAt(index)
            const rect = shown.tileRect(id)
            contextMenu.origin = rect.width > 0
                ? view.mapFromItem(shown, rect.x + rect.width * 0.7, rect.y + rect.height * 0.4)
                : Qt.point(view.width / 2 - Theme.menuWidth / 2, view.height / 3)
            view.launcher.showMenu(id)
        }
        function onPositionChanged(animated: bool) {
            if (animated)
                pageSpring.to = view.launcher.position
            else
                pageSpring.jump(view.launcher.position)
        }
    }

    Shortcut {
        sequences: ["Ctrl+,"]
        enabled: view.launcher.panel === Launcher.Settings || !view.covered
        onActivated: view.launcher.toggleSettings()
    }

    Image {
        anchors.fill: parent
        source: view.launcher.backdrop
        cache: false
        smooth: false
        fillMode: Image.Stretch
    }

    // Whatever is under the pointer, the wheel turns pages.
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => view.launcher.wheel(Qt.point(event.pixelDelta.x, event.pixelDelta.y),
                                              Qt.point(event.angleDelta.x, event.angleDelta.y),
                                              event.phase)
        orientation: Qt.Vertical
        target: null
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton) {
                contextMenu.origin = Qt.point(mouse.x, mouse.y)
                view.launcher.showMenu("")
            } else {
                view.launcher.back()
            }
        }
        Accessible.ignored: true
    }

    // Where the pointer was pressed last: a menu opens there.
    PointHandler {
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onActiveChanged: {
            if (active)
                contextMenu.origin = point.position
            view.pressedBeside = active && (dock.shown && dock.contains(dock.mapFromItem(view, point.position))
                                            || strip.shown && strip.contains(strip.mapFromItem(view, point.position)))
        }
    }

    Item {
        id: stage

        anchors { fill: parent; rightMargin: view.dockRoom }
        opacity: view.folderOpen ? 0.35 : 1
        scale: view.folderOpen && !Theme.reduceMotion && !view.softwareDrawn ? 0.98 : 1
        Behavior on opacity { NumberAnimation { id: stageFade; duration: Theme.makeRoom } }
        Behavior on scale { NumberAnimation { duration: Theme.makeRoom; easing.type: Easing.OutCubic } }

        WorkspaceStrip {
            id: strip

            objectName: "workspaceStrip"
            anchors {
                left: parent.left
                right: parent.right
                leftMargin: Theme.sideMargin(parent.width)
                rightMargin: Theme.sideMargin(parent.width)
                top: parent.top
                topMargin: Theme.edge + Theme.fieldHeight + 2 * Theme.unit
            }
            visible: shown && !view.launcher.searching
            enabled: !view.covered && !view.folderOpen
            workspaces: view.workspaces
            target: gestures.workspaceTarget
            onMenuRequested: (workspace, at) => {
                contextMenu.origin = at
                if (workspace === "")
                    view.workspaces.showNewMenu()
                else
                    view.workspaces.showMenu(workspace)
            }
            onDone: searchField.takeFocus()
        }

        SmartRow {
            id: smartRow

            anchors {
                left: parent.left
                right: parent.right
                top: parent.top
                topMargin: Theme.edge + Theme.fieldHeight + 2 * Theme.unit + (strip.shown ? strip.height + Theme.unit + 4 : 0)
            }
            visible: shown && !view.launcher.searching
            enabled: !view.covered && !view.folderOpen
            launcher: view.launcher
            suggestions: view.suggestions
            openClock: view.openClock
        }

        TileGrid {
            id: grid

            objectName: "grid"
            anchors {
                fill: parent
                topMargin: smartRow.anchors.topMargin + (smartRow.shown ? smartRow.height : 2 * Theme.unit)
                // The greeting covers no app: the grid ends above it.
                bottomMargin: view.launcher.welcoming ? Theme.noticeEdge + welcome.height + Theme.unit
                                                      : Theme.edge + Theme.dot + 3 * Theme.unit
            }
            visible: !view.launcher.searching
            enabled: !view.covered && !view.folderOpen
            tiles: view.launcher.tiles
            list: view.launcher.list
            clip: list // rows are cut at its top and bottom
            columns: view.launcher.columns
            rows: view.launcher.rows
            sideMargin: Theme.sideMargin(width)
            mirrored: view.launcher.mirrored
            highlight: view.folderOpen || view.launcher.searching ? -1 : view.launcher.highlight
            rippleOrigin: view.launcher.rippleOrigin
            position: pageSpring.value
            delegate: TileView {
                iconSize: view.launcher.iconSize
                showLabel: view.launcher.showLabels
                openClock: view.openClock
                hint: view.launcher.hintsMode && !view.folderOpen ? view.launcher.hint(index) : ""
                hintTyped: view.launcher.hintBuffer
                focusShown: searchField.focused && !view.launcher.searching
                carried: view.launcher.drag.byPointer && view.launcher.drag.tileId === tileId
                lifted: view.launcher.drag.active && !view.launcher.drag.byPointer && view.launcher.drag.tileId === tileId
                targeted: view.launcher.drag.target === tileId
                renaming: view.launcher.renaming === tileId && !view.folderOpen
                onActivated: newWindow => view.launcher.activate(tileId, newWindow)
                onToggled: view.launcher.toggleSelected(tileId)
                onMenuRequested: view.launcher.showMenu(tileId)
                onRenamed: name => view.launcher.endRenaming(name)
                onRenamingCancelled: view.launcher.cancelRenaming()
            }
            onWidthChanged: view.launcher.fitGrid(width, height)
            onHeightChanged: view.launcher.fitGrid(width, height)
            Component.onCompleted: view.launcher.fitGrid(width, height)
        }

        ScrollMark {
            anchors { right: grid.right; rightMargin: Theme.unit; top: grid.top; bottom: grid.bottom }
            visible: view.launcher.list && grid.visible && view.launcher.listRows > view.launcher.rows
            position: pageSpring.value
            seen: view.launcher.rows
            count: view.launcher.listRows
        }

        SearchResults {
            id: results

            anchors {
                fill: parent
                topMargin: Theme.edge + Theme.fieldHeight + 4 * Theme.unit
                bottomMargin: Theme.edge + Theme.dot + 3 * Theme.unit
            }
            launcher: view.launcher
            visible: view.launcher.searching
            enabled: !view.covered
        }

        DocumentsRow {
            anchors.horizontalCenter: parent.horizontalCenter
            y: results.y + results.end + 2 * Theme.unit
            room: view.width - 2 * Theme.sideMargin(view.width)
            suggestions: view.suggestions
            onDone: searchField.takeFocus()
        }

        // What is seldom there is made when it is wanted: a start does not wait for it.
        Loader {
            anchors.centerIn: parent
            active: !view.launcher.searching && view.launcher.tiles.count === 0
            sourceComponent: EmptyState {
                readonly property bool narrowed: view.launcher.restriction.name !== "" && !view.launcher.restriction.lifted
                title: narrowed ? qsTr("No apps in “%1”").arg(view.launcher.restriction.name) : qsTr("No apps yet")
                text: narrowed ? qsTr("“Show all apps” brings the others back.") : qsTr("Apps appear here as soon as they are installed.")
            }
        }

        SearchField {
            id: searchField

            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.edge
            launcher: view.launcher
            suggestions: view.suggestions
        }

        Loader {
            anchors { left: searchField.right; leftMargin: 2 * Theme.unit; verticalCenter: searchField.verticalCenter }
            active: view.launcher.restriction.name !== ""
            sourceComponent: FilterChip {
                objectName: "filterChip"
                restriction: view.launcher.restriction
            }
        }

        Loader {
            anchors { right: searchField.left; rightMargin: 2 * Theme.unit; verticalCenter: searchField.verticalCenter }
            active: view.workspaces.session.running
            sourceComponent: SessionCapsule {
                objectName: "sessionCapsule"
                room: searchField.x - 4 * Theme.unit
                enabled: !view.covered
                session: view.workspaces.session
            }
        }

        PageDots {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: habitBar.visible ? Theme.dotEdgeOverBar : Theme.edge
            visible: view.launcher.pageCount > 1
            enabled: !view.covered && !view.folderOpen
            count: view.launcher.pageCount
            position: pageSpring.value
            onPageRequested: page => view.launcher.goToPage(page)
        }
    }

    Loader {
        id: habitBar

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.habitBarEdge
        active: view.suggestions.hasOffer
        visible: active && !view.launcher.welcoming && !view.docked && !view.folderOpen && !view.launcher.searching
        sourceComponent: HabitBar {
            room: view.width
            suggestions: view.suggestions
            onDone: searchField.takeFocus()
        }
    }

    Spring {
        id: pageSpring

        response: 0.45
        dampingFraction: 0.86
        enabled: !Theme.reduceMotion
    }

    FolderPanel {
        id: folderPanel

        anchors.fill: parent
        launcher: view.launcher
        grid: grid
        enabled: !view.covered
    }

    WorkspacePanel {
        id: dock

        objectName: "workspacePanel"
        anchors { right: parent.right; top: parent.top; bottom: parent.bottom; margins: 2 * Theme.unit }
        width: Math.min(Theme.dockWidth, view.width * 0.55)
        enabled: shown && !contextMenu.open
        launcher: view.launcher
        workspaces: view.workspaces
        settings: view.settings
        targeted: gestures.workspaceTarget !== "" && gestures.workspaceTarget === view.workspaces.editor.workspace
        target: gestures.workspaceTarget
    }

    GridGestures {
        id: gestures

        anchors.fill: parent
        launcher: view.launcher
        grid: grid
        folderPanel: folderPanel
        pageSpring: pageSpring
        ready: !view.covered && !view.pressedBeside
        onDroppedOnWorkspace: (tileId, workspace) => view.workspaces.addTile(workspace, tileId)
        targetAt: at => {
            const onDock = dock.workspaceAt(dock.mapFromItem(gestures, at))
            return onDock !== "" ? onDock : strip.workspaceAt(strip.mapFromItem(gestures, at))
        }
        elsewhere: at => dock.shown && dock.contains(dock.mapFromItem(gestures, at))
    }

    Loader {
        id: welcome

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.noticeEdge
        active: view.launcher.welcoming
        visible: !view.docked && !view.folderOpen && !view.launcher.searching
        sourceComponent: WelcomeCard {
            launcher: view.launcher
        }
    }

    ModalPanels {
        id: panels

        anchors.fill: parent
        launcher: view.launcher
        suggestions: view.suggestions
        settings: view.settings
        workspaces: view.workspaces
    }

    NoticeStack {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.noticeEdge
        notices: view.launcher.notices
    }

    ContextMenu {
        id: contextMenu

        anchors.fill: parent
        launcher: view.launcher
        onClosed: {
            if (view.docked)
                dock.takeFocus()
            else if (view.launcher.renaming === "" && view.launcher.panel === Launcher.None)
                view.takeFocus()
        }
    }
}
