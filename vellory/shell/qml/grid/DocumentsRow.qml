// SPDX-License-Identifier: Apache-2.0
pragma ComponentBehavior: Bound
import QtQuick
import Vellory

// The documents that the highlighted app opened last, a button each; Tab leads there.
Row {
    id: documents

    required property Suggestions suggestions
    property int room: 1280

    // Gives the keyboard back to the search field.
    signal done()

    readonly property int most: Math.max(1, Math.floor(room / (Theme.documentWidth + Theme.unit)) - 1)

    spacing: Theme.unit
    visible: suggestions.documents.length > 0
    Keys.onEscapePressed: done()

    Text {
        height: Theme.controlHeight
        verticalAlignment: Text.AlignVCenter
        text: qsTr("Recent in %1").arg(documents.suggestions.documentsApp)
        textFormat: Text.PlainText
        color: Theme.textDim
        font.pixelSize: Theme.labelSize
    }
    Repeater {
        model: documents.suggestions.documents.slice(0, documents.most)

        Rectangle {
            id: chip

            required property var modelData

            function open(): void {
                documents.suggestions.openDocument(documents.suggestions.documentsTile, modelData.path)
            }

            width: Math.min(Theme.documentWidth, name.implicitWidth + 4 * Theme.unit)
            height: Theme.controlHeight
            radius: height / 2
            color: hover.hovered ? Theme.highlightFill : Theme.fieldFill
            border.width: activeFocus ? 2 : 1
            border.color: activeFocus ? Theme.accent : Theme.fieldBorder
            opacity: press.pressed ? 0.7 : 1

            activeFocusOnTab: true
            Keys.onReturnPressed: open()
            Keys.onSpacePressed: open()

            Accessible.role: Accessible.Button
            Accessible.name: qsTr("Open %1").arg(modelData.name)
            Accessible.description: modelData.folder
            Accessible.focusable: true
            Accessible.onPressAction: open()

            Text {
                id: name
                anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 2 * Theme.unit }
                text: chip.modelData.name
                textFormat: Text.PlainText
                color: Theme.text
                elide: Text.ElideMiddle
                font.pixelSize: Theme.labelSize
            }
            HoverHandler {
                id: hover
            }
            TapHandler {
                id: press
                onTapped: chip.open()
            }
        }
    }
}
