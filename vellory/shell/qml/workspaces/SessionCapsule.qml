// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The focus session that is under way: a ring that runs down around the workspace's symbol, its
// name, the time that is left, and a way to end it now.
Rectangle {
    id: capsule

    required property FocusSession session
    property real room: 400

    readonly property bool narrow: room < 260

    visible: session.running
    width: content.implicitWidth + Theme.unit
    height: Theme.fieldHeight
    radius: height / 2
    color: Theme.fieldFill
    border.width: 1
    border.color: Theme.fieldBorder

    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Focus session: %1, %2").arg(session.name).arg(session.spoken)

    MouseArea {
        anchors.fill: parent
        Accessible.ignored: true
    }

    Row {
        id: content

        anchors { left: parent.left; leftMargin: 4; verticalCenter: parent.verticalCenter }
        spacing: Theme.unit + 2

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: 32
            height: 32

            // The ring: what is over, thin, and what is left of it.
            Canvas {
                id: ring

                readonly property real share: capsule.session.share
                onShareChanged: requestPaint()
                onVisibleChanged: requestPaint()

                anchors.fill: parent
                Accessible.ignored: true

                function arc(context, color: color, turn: real): void {
                    context.strokeStyle = color
                    context.beginPath()
                    context.arc(width / 2, height / 2, width / 2 - 3, -Math.PI / 2, -Math.PI / 2 + 2 * Math.PI * turn)
                    context.stroke()
                }
                onPaint: {
                    const context = getContext("2d")
                    context.reset()
                    context.lineWidth = 3
                    context.lineCap = "round"
                    arc(context, Theme.ringTrack, 1)
                    if (share > 0)
                        arc(context, Theme.accent, share)
                }
            }
            Connections {
                target: Theme
                function onDarkChanged() { ring.requestPaint() }
            }
            Image {
                anchors.centerIn: parent
                width: 14
                height: 14
                sourceSize: Qt.size(28, 28)
                source: Theme.symbolSource(capsule.session.symbol, Theme.text)
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: !capsule.narrow
            width: Math.min(implicitWidth, 120)
            text: capsule.session.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.text
            font { pixelSize: Theme.labelSize; weight: Font.Medium }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            // As wide as with zeros, so that nothing moves when it counts.
            width: Math.ceil(digits.advanceWidth)
            horizontalAlignment: Text.AlignHCenter
            text: capsule.session.remaining
            color: Theme.text
            font { pixelSize: Theme.bodySize; weight: Font.DemiBold }
            Accessible.ignored: true

            TextMetrics {
                id: digits
                text: capsule.session.remaining.replace(/[0-9]/g, "0")
                font { pixelSize: Theme.bodySize; weight: Font.DemiBold }
            }
        }
        PanelButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("End now")
            onActivated: capsule.session.endNow()
        }
    }
}
