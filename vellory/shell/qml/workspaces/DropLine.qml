// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// Where in a list the grasped row would go.
Rectangle {
    required property ListView view
    required property int from
    required property int dropAt
    required property int rowHeight

    visible: dropAt >= 0 && dropAt !== from
    parent: view.contentItem
    z: 2
    width: view.width
    height: 2
    radius: 1
    color: Theme.accent
    y: (dropAt > from ? dropAt + 1 : dropAt) * rowHeight - 1
}
