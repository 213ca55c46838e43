// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A sentence that explains a control.
Text {
    color: Theme.textDim
    textFormat: Text.PlainText
    wrapMode: Text.WordWrap
    lineHeight: 1.15
    // Whole pixels, so that what stands below is not drawn across two.
    height: Math.ceil(implicitHeight)
    font.pixelSize: Theme.smallSize
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
