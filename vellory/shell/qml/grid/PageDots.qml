// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// One dot for each page; the one in view is a capsule that follows the finger.
Row {
    id: dots

    required property int count
    required property real position
    signal pageRequested(int page)

    activeFocusOnTab: true
    Keys.onLeftPressed: pageRequested(Math.max(0, Math.round(position) - (LayoutMirroring.enabled ? -1 : 1)))
    Keys.onRightPressed: pageRequested(Math.min(count - 1, Math.round(position) + (LayoutMirroring.enabled ? -1 : 1)))
    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Pages")
    Accessible.focusable: true

    // With very many pages the dots move closer instead of leaving the display.
    spacing: count > 24 ? 4 : Theme.dotGap

    Repeater {
        model: dots.count

        Item {
            id: dot

            required property int index
            readonly property real nearness: Math.max(0, 1 - Math.abs(dots.position - index))

            width: Theme.dot + (Theme.dotCurrent - Theme.dot) * nearness
            height: Theme.dot

            Accessible.role: Accessible.PageTab
            Accessible.name: qsTr("Page %1 of %2").arg(index + 1).arg(dots.count)
            Accessible.onPressAction: dots.pageRequested(index)

            Rectangle {
                visible: dots.activeFocus && dot.nearness > 0.5
                anchors { fill: parent; margins: -5 }
                radius: height / 2
                color: "transparent"
                border { width: 2; color: Theme.accent }
            }
            Rectangle {
                anchors.fill: parent
                radius: height / 2
                color: Theme.text
                opacity: 0.35 + 0.55 * dot.nearness
            }
            TapHandler {
                margin: Theme.dotGap / 2 + 4
                onTapped: dots.pageRequested(dot.index)
            }
        }
    }
}
