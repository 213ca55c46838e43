// SPDX-License-Identifier: Apache-2.0
import QtQuick
import Vellory

// A heading on a page of the settings.
Text {
    color: Theme.text
    font { pixelSize: Theme.headingSize; weight: Font.DemiBold }
    wrapMode: Text.WordWrap
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
