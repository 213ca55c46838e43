// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "platform/FolderWatcher.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Watches the folders that apps live in and calls for a rescan once they have come to rest, so
/// that the burst of changes that an install makes leads to one.
class AppRescanner {
  public:
    /// How long nothing may have changed, in seconds.
    static constexpr double quietPeriod = 2.0;

    AppRescanner(FolderWatcher& watcher, Scheduler& scheduler, std::function<void()> rescan);
    ~AppRescanner();
    AppRescanner(const AppRescanner&) = delete;
    AppRescanner& operator=(const AppRescanner&) = delete;

    /// Watches these folders from now on.
    void watch(const std::vector<std::filesystem::path>& folders);

  private:
    FolderWatcher& watcher_;
    Scheduler& scheduler_;
    std::function<void()> rescan_;
    Scheduler::Handle pending_;
};

} // namespace vellory
