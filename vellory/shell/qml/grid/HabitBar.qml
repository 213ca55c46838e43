// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// Offers apps that are often opened together as a workspace. It stands below the page dots, where
// it covers nothing, and says no more than fits.
Rectangle {
    id: bar

    required property Suggestions suggestions
    property int room: 1280

    readonly property bool wide: room >= 900

    // Gives the keyboard back to the search field.
    signal done()

    width: content.implicitWidth + 4 * Theme.unit
    height: Theme.noticeHeight
    radius: height / 2
    color: Theme.noticeFill
    border.width: 1
    border.color: Theme.panelBorder

    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("%1 are often opened together").arg(suggestions.offerNames)

    Keys.onEscapePressed: done()

    // Clicks beside the buttons stay here.
    MouseArea {
        anchors.fill: parent
        Accessible.ignored: true
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: Theme.unit + 4

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            Repeater {
                model: bar.suggestions.offerIcons
                AppIcon {
                    required property string modelData
                    source: modelData
                    size: 24
                    width: size
                    height: size
                }
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: bar.wide ? qsTr("You often open these together around %1").arg(bar.suggestions.offerTime)
                           : qsTr("Often together around %1").arg(bar.suggestions.offerTime)
            color: Theme.text
            font.pixelSize: Theme.bodySize
        }
        CheckMark {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Open it at that time")
            detail: bar.suggestions.offerSchedule
            checked: bar.suggestions.opensAtTime
            onToggled: bar.suggestions.opensAtTime = !bar.suggestions.opensAtTime
        }
        PanelButton {
            anchors.verticalCenter: parent.verticalCenter
            text: bar.wide ? qsTr("Save as workspace") : qsTr("Save")
            primary: true
            onActivated: {
                bar.done()
                bar.suggestions.accept()
            }
        }
        CloseButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Do not suggest this again")
            onActivated: {
                bar.done()
                bar.suggestions.dismiss()
            }
        }
    }
}
