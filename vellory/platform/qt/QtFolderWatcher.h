// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileSystemWatcher>
#include <QObject>

#include "platform/FolderWatcher.h"

namespace vellory {

class QtFolderWatcher final : public QObject, public FolderWatcher {
    Q_OBJECT

  public:
    explicit QtFolderWatcher(QObject* parent = nullptr);

    void watch(const std::vector<std::filesystem::path>& folders,
               std::function<void()> changed) override;

  private:
    QFileSystemWatcher watcher_;
    std::function<void()> changed_;
};

} // namespace vellory
