// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/LinuxFolderWatcher.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include <sys/inotify.h>
#include <unistd.h>

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// Of the folder itself, or of a folder in it, which may be one that was missing.
constexpr std::uint32_t ofFolders =
    IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED | IN_ISDIR;
constexpr std::uint32_t watchedEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                        IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                        IN_ONLYDIR;

} // namespace

LinuxFolderWatcher::LinuxFolderWatcher(EventLoop& loop)
    : inotify_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (inotify_ >= 0) {
        events_ = loop.watchReadable(inotify_, [this] { readEvents(); });
    }
}

LinuxFolderWatcher::~LinuxFolderWatcher() {
    events_.reset();
    if (inotify_ >= 0) {
        ::close(inotify_);
    }
}

void LinuxFolderWatcher::watch(const std::vector<fs::path>& folders,
                               std::function<void()> changed) {
    folders_.assign(folders.begin(),
                    folders.begin() +
                        std::min(std::ssize(folders), static_cast<std::ptrdiff_t>(mostFolders)));
    changed_ = std::move(changed);
    arm();
}

void LinuxFolderWatcher::arm() {
    const auto before = std::exchange(watches_, {});
    present_.clear();
    for (const fs::path& folder : folders_) {
        arm(folder);
    }
    for (const auto& [id, purpose] : before) {
        if (!watches_.contains(id)) {
            ::inotify_rm_watch(inotify_, id); // Fails for a folder that is gone.
        }
    }
}

void LinuxFolderWatcher::arm(const fs::path& folder) {
    // The folder may come between the look for it and the watch on what it appears in.
    constexpr int mostTries = 3;
    for (int i = 0; i < mostTries; ++i) {
        if (const WatchID id = add(folder); id >= 0) {
            watches_[id] = Purpose::content;
            present_[folder] = id;
            return;
        }
        const bool isMissing = errno == ENOENT;
        fs::path missing = folder;
        WatchID id = -1;
        while (id < 0 && missing.has_relative_path()) {
            id = add(missing.parent_path());
            if (id < 0) {
                missing = missing.parent_path();
            }
        }
        if (id >= 0) {
            watches_.emplace(id, Purpose::coming);
        }
        std::error_code error;
        if (!isMissing || !fs::exists(missing, error)) {
            return;
        }
    }
}

LinuxFolderWatcher::WatchID LinuxFolderWatcher::add(const fs::path& folder) {
    return ::inotify_add_watch(inotify_, folder.c_str(), watchedEvents);
}

void LinuxFolderWatcher::readEvents() {
    bool hasChanged = false;
    bool isOutOfPlace = false;
    alignas(inotify_event) std::array<char, 16 * 1024> buffer{};
    for (ssize_t size = 0;
         (size = ::read(inotify_, buffer.data(), buffer.size())) > 0 || errno == EINTR;) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += static_cast<ssize_t>(sizeof event + event.len);
            const auto about = watches_.find(event.wd);
            if ((event.mask & IN_Q_OVERFLOW) != 0) {
                hasChanged = isOutOfPlace = true;
            } else if (about == watches_.end()) {
                continue; // of a watch that has been given up
            } else if (about->second == Purpose::coming) {
                isOutOfPlace = true;
            } else {
                hasChanged = true;
                isOutOfPlace |= (event.mask & ofFolders) != 0;
            }
        }
    }
    if (isOutOfPlace) {
        const auto before = present_;
        arm();
        hasChanged |= present_ != before;
    }
    if (hasChanged && changed_) {
        const auto changed = changed_; // It may ask for other folders.
        changed();
    }
}

} // namespace vellory
