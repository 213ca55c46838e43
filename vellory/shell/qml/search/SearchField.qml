// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// The search pill. It has the focus as long as the launcher is shown, so typing anywhere searches,
// and hands every key to the launcher first: arrows, Return and Escape mean the grid.
Rectangle {
    id: field

    required property Launcher launcher
    required property Suggestions suggestions

    readonly property bool focused: input.activeFocus

    function takeFocus(): void {
        input.forceActiveFocus()
    }

    width: Theme.fieldWidth
    height: Theme.fieldHeight
    radius: height / 2
    color: Theme.fieldFill
    border.width: 1
    border.color: Theme.fieldBorder

    Image {
        id: glass
        anchors { left: parent.left; leftMargin: 14; verticalCenter: parent.verticalCenter }
        width: Theme.symbol
        height: Theme.symbol
        sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
        source: Theme.symbolSource("magnifyingglass", Theme.textDim)
    }

    TextInput {
        id: input

        anchors { left: glass.right; right: clear.left; leftMargin: 8; rightMargin: 8; verticalCenter: parent.verticalCenter }
        focus: true
        text: field.launcher.query
        onTextEdited: field.launcher.query = text
        clip: true
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentInk
        font.pixelSize: Theme.bodySize
        // The field looks quiet until something is typed.
        cursorVisible: activeFocus && text !== ""
        // What is cut here is known to be too long by its length.
        maximumLength: field.launcher.search.longestQuery + 1

        Keys.priority: Keys.BeforeItem
        Keys.onPressed: event => {
            // What types a character goes into the field itself, where input methods work.
            const typed = field.launcher.hintsMode ? event.text : ""
            event.accepted = field.suggestions.handleKey(event.key, event.modifiers, typed)
        }

        Accessible.role: Accessible.EditableText
        Accessible.name: qsTr("Search")
        Accessible.description: qsTr("Search apps, or ? to ask")

        Text {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
            visible: input.text === "" && input.preeditText === ""
            text: qsTr("Type to search; ↩ opens the first match")
            color: Theme.textDim
            font: input.font
            elide: Text.ElideRight
        }
    }

    Image {
        id: clear
        anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        width: Theme.symbol
        height: Theme.symbol
        sourceSize: Qt.size(2 * Theme.symbol, 2 * Theme.symbol)
        source: Theme.symbolSource("xmark.circle.fill", Theme.textDim)
        visible: input.text !== ""
        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Clear search")
        TapHandler {
            onTapped: field.launcher.clearQuery()
        }
    }
}
