// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// What closing a workspace does, how a Focus opens one, and which apps are left alone.
Flickable {
    id: page

    required property Settings settings
    property bool adding: false

    contentHeight: content.height
    clip: true
    boundsBehavior: Flickable.StopAtBounds

    Column {
        id: content

        width: page.width
        spacing: Theme.unit

        SettingsHeading {
            width: parent.width
            text: qsTr("When a workspace closes")
        }
        ChoiceList {
            width: parent.width
            options: page.settings.closeAppsTitles
            current: page.settings.closeApps
            onChosen: index => page.settings.closeApps = index
        }
        HintText {
            width: parent.width
            text: page.settings.closingText
        }
        Item { width: 1; height: Theme.unit }
        SettingsHeading {
            width: parent.width
            text: qsTr("Focus")
        }
        CheckMark {
            text: page.settings.readFocusText
            checked: page.settings.readFocus
            onToggled: page.settings.readFocus = !page.settings.readFocus
        }
        HintText {
            width: parent.width
            visible: !page.settings.canReadFocus
            color: Theme.warning
            text: page.settings.cannotReadFocusText
        }
        HintText {
            width: parent.width
            text: page.settings.automationText
        }
        Item { width: 1; height: Theme.unit }
        SettingsHeading {
            width: parent.width
            text: qsTr("Protected apps")
        }
        HintText {
            width: parent.width
            text: qsTr("No workspace hides or quits them.")
        }
        Repeater {
            model: page.settings.protectedApps.rows

            Item {
                id: row

                required property string key
                required property string name
                required property string icon

                width: content.width
                height: 40
                Accessible.role: Accessible.ListItem
                Accessible.name: name

                AppIcon {
                    id: face
                    anchors { left: parent.left; verticalCenter: parent.verticalCenter }
                    width: 28
                    height: 28
                    size: 28
                    source: row.icon
                }
                Text {
                    anchors { left: face.right; leftMargin: 10; right: remove.left; verticalCenter: parent.verticalCenter }
                    text: row.name
                    textFormat: Text.PlainText
                    elide: Text.ElideMiddle
                    maximumLineCount: 1
                    color: Theme.text
                    font.pixelSize: Theme.bodySize
                }
                SymbolButton {
                    id: remove
                    anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                    symbol: "xmark.circle.fill"
                    name: qsTr("Remove %1").arg(row.name)
                    onActivated: page.settings.protectedApps.removeApp(row.key)
                }
            }
        }
        TextLink {
            visible: !page.adding
            text: qsTr("App…")
            symbol: "plus"
            onActivated: page.adding = true
        }
        Loader {
            width: parent.width
            active: page.adding
            visible: active
            sourceComponent: AppFinder {
                source: page.settings.protectedApps
                onClosed: page.adding = false
            }
        }
    }
}
