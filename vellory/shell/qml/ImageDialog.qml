// SPDX-License-Identifier: Apache-2.0
import QtQuick.Dialogs

FileDialog {
    signal chosen(url file)

    fileMode: FileDialog.OpenFile
    nameFilters: [qsTr("Pictures (*.png *.jpg *.jpeg *.svg *.webp *.gif *.bmp *.xpm *.ico)")]
    onAccepted: chosen(selectedFile)
}
