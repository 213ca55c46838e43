// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// Notices by themselves on the screen, while the grid that else shows them is not there.
Item {
    id: view

    required property NoticeList notices

    // A window cannot be empty.
    implicitWidth: Math.max(1, stack.implicitWidth)
    implicitHeight: Math.max(1, stack.implicitHeight)

    NoticeStack {
        id: stack
        objectName: "notices"
        notices: view.notices
    }
}
