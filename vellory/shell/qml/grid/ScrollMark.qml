// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// How far a list is scrolled, and how much of it is seen.
Item {
    id: mark

    // In rows: the first one seen, how many are seen, and how many there are.
    required property real position
    required property int seen
    required property int count

    readonly property real rowHeight: height / Math.max(1, count)

    width: Theme.scrollMarkWidth
    Accessible.ignored: true

    Rectangle {
        // Pulled past an end it gets shorter there.
        readonly property real from: Math.max(0, mark.position * mark.rowHeight)
        readonly property real to: Math.min(mark.height, (mark.position + mark.seen) * mark.rowHeight)

        y: Math.min(from, mark.height - height)
        width: parent.width
        height: Math.max(3 * Theme.unit, to - from)
        radius: width / 2
        color: Theme.scrollMark
    }
}
