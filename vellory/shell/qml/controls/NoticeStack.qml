// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Notices above the bottom edge, the newest lowest; several stack upwards.
Column {
    id: stack

    required property NoticeList notices

    spacing: Theme.unit

    move: Transition { NumberAnimation { property: "y"; duration: Theme.noticeIn; easing.type: Easing.OutCubic } }
    add: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.noticeIn }
    }

    Repeater {
        model: stack.notices

        Rectangle {
            id: capsule

            required property string text
            required property string symbol
            required property bool undoable
            required property int noticeId

            anchors.horizontalCenter: parent?.horizontalCenter
            width: Math.min(content.implicitWidth + 5 * Theme.unit, 640)
            height: Theme.noticeHeight
            radius: height / 2
            color: Theme.noticeFill
            border.width: 1
            border.color: Theme.panelBorder

            Accessible.role: Accessible.AlertMessage
            Accessible.name: text

            Row {
                id: content
                anchors.centerIn: parent
                spacing: Theme.unit + 2
                Image {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: capsule.symbol !== ""
                    width: Theme.symbol
                    height: Theme.symbol
                    sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
                    source: capsule.symbol !== "" ? Theme.symbolSource(capsule.symbol, Theme.text) : ""
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, 560)
                    text: capsule.text
                    textFormat: Text.PlainText
                    color: Theme.text
                    elide: Text.ElideMiddle
                    maximumLineCount: 1
                    font.pixelSize: Theme.bodySize
                }
                TextLink {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: capsule.undoable
                    text: qsTr("Undo")
                    symbol: "arrow.uturn.backward"
                    onActivated: stack.notices.undo(capsule.noticeId)
                }
            }
        }
    }
}
