// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>

#include "platform/EventLoop.h"
#include "platform/FolderWatcher.h"

namespace vellory {

/// Watches by inotify(7).
class LinuxFolderWatcher final : public FolderWatcher {
  public:
    /// Further folders are not watched: users share a number of watches among all their programs.
    static constexpr std::size_t mostFolders = 1000;

    /// `loop` must outlive this object.
    explicit LinuxFolderWatcher(EventLoop& loop);
    ~LinuxFolderWatcher() override;
    LinuxFolderWatcher(const LinuxFolderWatcher&) = delete;
    LinuxFolderWatcher& operator=(const LinuxFolderWatcher&) = delete;

    void watch(const std::vector<std::filesystem::path>& folders,
               std::function<void()> changed) override;

  private:
    enum class Purpose {
        content, ///< of a folder that is to be watched
        coming   ///< of a folder that is missing, somewhere below this one
    };
    using WatchID = int;

    /// Puts every watch where it belongs as the folders are now.
    void arm();
    /// Watches the folder, or what it would appear in.
    void arm(const std::filesystem::path& folder);
    WatchID add(const std::filesystem::path& folder);
    void readEvents();

    int inotify_;
    std::vector<std::filesystem::path> folders_;
    std::function<void()> changed_;
    std::map<WatchID, Purpose> watches_;
    /// Those of `folders_` that are there and watched.
    std::map<std::filesystem::path, WatchID> present_;
    EventLoop::Handle events_;
};

} // namespace vellory
