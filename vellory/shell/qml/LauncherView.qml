// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The launcher over the whole display: backdrop, search field, grid, folder panel and notices.
FocusScope {
    id: view

    required property Launcher launcher

    // Drawn without graphics hardware: scaling the whole stage would cost more than it shows.
    readonly property bool softwareDrawn: GraphicsInfo.api === GraphicsInfo.Software
    readonly property bool folderOpen: launcher.openFolder !== ""
    // Something on the screen is still on its way; pictures wait for it.
    readonly property bool moving: opening.running || pageSpring.running || folderPanel.moving

    focus: true
    LayoutMirroring.enabled: launcher.mirrored
    LayoutMirroring.childrenInherit: true

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
                pageSpring.jump(view.launcher.page)
                opening.restart()
                searchField.takeFocus()
            }
        }
        function onPageChanged(animated: bool) {
            if (animated)
                pageSpring.to = view.launcher.page
            else
                pageSpring.jump(view.launcher.page)
        }
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
        onClicked: view.launcher.back()
        Accessible.ignored: true
    }

    Item {
        id: stage

        anchors.fill: parent
        opacity: view.folderOpen ? 0.35 : 1
        scale: view.folderOpen && !Theme.reduceMotion && !view.softwareDrawn ? 0.98 : 1
        Behavior on opacity { NumberAnimation { duration: Theme.makeRoom } }
        Behavior on scale { NumberAnimation { duration: Theme.makeRoom; easing.type: Easing.OutCubic } }

        TileGrid {
            id: grid

            anchors {
                fill: parent
                topMargin: Theme.edge + Theme.fieldHeight + 4 * Theme.unit
                bottomMargin: Theme.edge + Theme.dot + 3 * Theme.unit
            }
            visible: !view.launcher.searching
            tiles: view.launcher.tiles
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
                onActivated: newWindow => view.launcher.activate(tileId, newWindow)
            }
            onWidthChanged: view.launcher.fitGrid(width, height)
            onHeightChanged: view.launcher.fitGrid(width, height)
            Component.onCompleted: view.launcher.fitGrid(width, height)

            DragHandler {
                id: pageDrag

                enabled: !view.folderOpen && view.launcher.pageCount > 1
                target: null
                yAxis.enabled: false
                property real velocity: 0
                onTranslationChanged: {
                    if (!active)
                        return
                    velocity = centroid.velocity.x
                    const direction = view.launcher.mirrored ? 1 : -1
                    let position = view.launcher.page + direction * translation.x / grid.width
                    const last = view.launcher.pageCount - 1
                    if (position < 0)
                        position = view.launcher.rubberBand(position, 0.35)
                    else if (position > last)
                        position = last + view.launcher.rubberBand(position - last, 0.35)
                    pageSpring.hold(position)
                }
                onActiveChanged: {
                    if (active)
                        return
                    const target = view.launcher.pageAfterDrag(translation.x, velocity, grid.width)
                    const direction = view.launcher.mirrored ? 1 : -1
                    view.launcher.goToPage(target)
                    pageSpring.release(target, direction * velocity / Math.max(1, grid.width))
                }
            }
        }

        SearchResults {
            anchors.fill: grid
            launcher: view.launcher
            visible: view.launcher.searching
        }

        EmptyState {
            anchors.centerIn: parent
            visible: !view.launcher.searching && view.launcher.tiles.count === 0
            title: qsTr("No apps yet")
            text: qsTr("Apps appear here as soon as they are installed.")
        }

        SearchField {
            id: searchField

            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.edge
            launcher: view.launcher
        }

        PageDots {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.edge
            visible: view.launcher.pageCount > 1
            count: view.launcher.pageCount
            position: pageSpring.value
            onPageRequested: page => view.launcher.goToPage(page)
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
    }

    WelcomeCard {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.noticeEdge
        visible: view.launcher.welcoming && !view.folderOpen && !view.launcher.searching
        launcher: view.launcher
    }

    NoticeStack {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.noticeEdge
        notices: view.launcher.notices
    }
}
