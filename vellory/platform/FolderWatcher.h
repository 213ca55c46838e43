// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

namespace vellory {

/// Tells of changes in folders: entries that come, go, are renamed or rewritten. Main thread.
class FolderWatcher {
  public:
    virtual ~FolderWatcher() = default;

    /// Watches `folders` in place of those watched before; `changed` is called for every event,
    /// also in bursts. That a folder comes that was missing, or could not be read, is an event as
    /// well. Asking for the same folders again costs little.
    virtual void watch(const std::vector<std::filesystem::path>& folders,
                       std::function<void()> changed) = 0;
};

} // namespace vellory
