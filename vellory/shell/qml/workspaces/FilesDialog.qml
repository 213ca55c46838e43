// SPDX-License-Identifier: Apache-2.0
import QtQuick
import QtQuick.Dialogs

// The desktop's dialog for files, or for a folder. Loaded when it is first asked for.
Item {
    id: chooser

    signal chosen(var files)
    signal closed()

    function choose(folders: bool, from: url): void {
        files.currentFolder = from
        folder.currentFolder = from
        if (folders)
            folder.open()
        else
            files.open()
    }

    FileDialog {
        id: files
        fileMode: FileDialog.OpenFiles
        title: qsTr("Files that the workspace opens")
        onAccepted: {
            chooser.chosen(selectedFiles)
            chooser.closed()
        }
        onRejected: chooser.closed()
    }
    FolderDialog {
        id: folder
        title: qsTr("Folder that the workspace opens")
        onAccepted: {
            chooser.chosen([selectedFolder])
            chooser.closed()
        }
        onRejected: chooser.closed()
    }
}
