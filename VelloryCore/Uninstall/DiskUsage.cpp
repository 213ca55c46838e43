// SPDX-License-Identifier: Apache-2.0
#include "Uninstall/DiskUsage.h"

#include <cstddef>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vellory::DiskUsage {

namespace {

/// Levels of folders that are kept open at once. Deeper ones close those above them.
constexpr std::size_t openLevels = 32;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// The entry `name` of the folder `parent` if it is itself a folder, not a link to one.
Folder openFolder(int parent, const char* name) {
    const int fd = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) {
        return nullptr;
    }
    Folder folder(::fdopendir(fd));
    if (folder == nullptr) {
        ::close(fd);
    }
    return folder;
}

using Identity = std::pair<dev_t, ino_t>;

class Walk {
  public:
    std::int64_t total() const { return total_; }

    void count(const struct stat& entry) {
        const bool hasOtherNames = entry.st_nlink > 1 && !S_ISDIR(entry.st_mode);
        if (hasOtherNames && !counted_.emplace(entry.st_dev, entry.st_ino).second) {
            return;
        }
        constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max();
        constexpr std::int64_t block = 512; // the unit of st_blocks, whatever the file system's is
        const auto blocks = static_cast<std::int64_t>(entry.st_blocks);
        if (blocks > 0) {
            total_ = blocks > (limit - total_) / block ? limit : total_ + blocks * block;
        }
    }

    /// Counts everything inside `root`.
    void descend(Folder root) {
        enter(std::move(root));
        while (!levels_.empty()) {
            Level& level = levels_.back();
            if (level.folders.empty()) {
                leave();
                continue;
            }
            const std::string name = std::move(level.folders.back());
            level.folders.pop_back();
            if (Folder folder = openFolder(::dirfd(level.folder.get()), name.c_str())) {
                enter(std::move(folder));
            }
        }
    }

  private:
    struct Level {
        /// Null while levels far below are being walked.
        Folder folder;
        Identity identity;
        /// The folders inside that are still to be walked.
        std::vector<std::string> folders;
    };

    /// Counts the entries of `folder`, and makes it the lowest level if it holds folders.
    void enter(Folder folder) {
        const int fd = ::dirfd(folder.get());
        std::vector<std::string> folders;
        while (const dirent* entry = ::readdir(folder.get())) {
            const std::string_view name = entry->d_name;
            struct stat info{};
            if (name == "." || name == ".." ||
                ::fstatat(fd, entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
                continue;
            }
            count(info);
            if (S_ISDIR(info.st_mode)) {
                folders.emplace_back(name);
            }
        }
        struct stat self{};
        if (folders.empty() || ::fstat(fd, &self) != 0) {
            return;
        }
        levels_.push_back({std::move(folder), {self.st_dev, self.st_ino}, std::move(folders)});
        if (levels_.size() > openLevels) {
            levels_[levels_.size() - 1 - openLevels].folder.reset();
        }
    }

    /// Goes back to the level above, opening it again if it was closed. A folder that was moved
    /// while it was walked has another one above it: the walk ends rather than leave its root.
    void leave() {
        const Folder left = std::move(levels_.back().folder);
        levels_.pop_back();
        if (levels_.empty() || levels_.back().folder != nullptr) {
            return;
        }
        Folder above = openFolder(::dirfd(left.get()), "..");
        struct stat info{};
        if (above == nullptr || ::fstat(::dirfd(above.get()), &info) != 0 ||
            Identity(info.st_dev, info.st_ino) != levels_.back().identity) {
            levels_.clear();
            return;
        }
        levels_.back().folder = std::move(above);
    }

    std::vector<Level> levels_;
    std::set<Identity> counted_;
    std::int64_t total_ = 0;
};

} // namespace

std::int64_t allocated(const std::filesystem::path& place) {
    struct stat info{};
    if (::lstat(place.c_str(), &info) != 0) {
        return 0;
    }
    Walk walk;
    if (!S_ISDIR(info.st_mode)) {
        walk.count(info);
    } else if (Folder folder = openFolder(AT_FDCWD, place.c_str())) {
        walk.descend(std::move(folder));
    }
    return walk.total();
}

} // namespace vellory::DiskUsage
