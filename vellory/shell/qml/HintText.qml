// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A sentence that explains a control.
Text {
    color: Theme.textDim
    textFormat: Text.PlainText
    wrapMode: Text.WordWrap
    lineHeight: 1.15
    font.pixelSize: Theme.smallSize
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
