// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The settings: the pages by name at the left, the chosen one beside them. A page is an entry in
// `pages`; it is made when it is shown. Components are not bound here: Qt 6.4 refuses to make a
// bound one that came out of a list.
FocusScope {
    id: panel

    required property Settings settings
    required property Suggestions suggestions

    readonly property var pages: [
        { title: qsTr("General"), component: generalPage },
        { title: qsTr("Workspaces"), component: workspacesPage },
        { title: qsTr("Suggestions"), component: suggestionsPage },
        { title: qsTr("Not opened in %1 days").arg(settings.unusedDays), component: unusedPage }
    ]

    Component {
        id: generalPage
        GeneralPage {
            settings: panel.settings
        }
    }
    Component {
        id: workspacesPage
        WorkspacesPage {
            settings: panel.settings
        }
    }
    Component {
        id: suggestionsPage
        SuggestionsPage {
            settings: panel.settings
        }
    }
    Component {
        id: unusedPage
        UnusedAppsPage {
            settings: panel.settings
            suggestions: panel.suggestions
        }
    }

    ListView {
        id: names

        anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
        width: Math.min(208, panel.width * 0.34)
        activeFocusOnTab: true
        interactive: false
        keyNavigationEnabled: true
        model: panel.pages
        currentIndex: panel.settings.page
        onCurrentIndexChanged: panel.settings.page = currentIndex

        delegate: Rectangle {
            id: name

            required property var modelData
            required property int index
            readonly property bool current: ListView.isCurrentItem

            width: names.width
            height: 36
            radius: 10
            color: current ? Theme.highlightFill : "transparent"
            border.width: current && names.activeFocus ? 2 : 0
            border.color: Theme.accent

            Accessible.role: Accessible.PageTab
            Accessible.name: modelData.title
            Accessible.selected: current
            Accessible.onPressAction: panel.settings.page = index

            Text {
                anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 12 }
                text: name.modelData.title
                color: Theme.text
                elide: Text.ElideRight
                font { pixelSize: Theme.bodySize; weight: name.current ? Font.DemiBold : Font.Normal }
            }
            TapHandler {
                onTapped: panel.settings.page = name.index
            }
        }
    }

    Rectangle {
        id: line
        anchors { left: names.right; leftMargin: 2 * Theme.unit; top: parent.top; bottom: parent.bottom }
        width: 1
        color: Theme.panelBorder
    }

    Loader {
        anchors { left: line.right; right: parent.right; top: parent.top; bottom: parent.bottom; leftMargin: 3 * Theme.unit }
        // Made when it can be seen, so that what it shows is asked for then.
        active: panel.visible && panel.Window.visibility !== Window.Hidden
        sourceComponent: panel.pages[Math.max(0, Math.min(panel.settings.page, panel.pages.length - 1))].component
    }

    function takeFocus() {
        names.forceActiveFocus()
    }
}
