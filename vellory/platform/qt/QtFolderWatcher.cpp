// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtFolderWatcher.h"

#include <QFileInfo>
#include <QStringList>

namespace vellory {

QtFolderWatcher::QtFolderWatcher(QObject* parent) : QObject(parent) {
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (changed_) {
            changed_();
        }
    });
}

void QtFolderWatcher::watch(const std::vector<std::filesystem::path>& folders,
                            std::function<void()> changed) {
    changed_ = std::move(changed);
    if (const QStringList before = watcher_.directories(); !before.isEmpty()) {
        watcher_.removePaths(before);
    }
    QStringList paths;
    for (const auto& folder : folders) {
        const QString path = QString::fromStdString(folder.string());
        if (QFileInfo(path).isDir()) {
            paths.append(path);
        }
    }
    if (!paths.isEmpty()) {
        watcher_.addPaths(paths);
    }
}

} // namespace vellory
