// SPDX-License-Identifier: Apache-2.0
#include "model/AppRescanner.h"

#include <utility>

namespace vellory {

AppRescanner::AppRescanner(FolderWatcher& watcher, Scheduler& scheduler,
                           std::function<void()> rescan)
    : watcher_(watcher), scheduler_(scheduler), rescan_(std::move(rescan)) {}

AppRescanner::~AppRescanner() {
    watcher_.watch({}, nullptr);
}

void AppRescanner::watch(const std::vector<std::filesystem::path>& folders) {
    watcher_.watch(folders, [this] { pending_ = scheduler_.after(quietPeriod, rescan_); });
}

} // namespace vellory
