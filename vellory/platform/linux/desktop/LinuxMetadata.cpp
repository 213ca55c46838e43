// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/LinuxMetadata.h"

#include <algorithm>
#include <mutex>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "Support/Text.h"
#include "Usage/RecentlyUsed.h"
#include "platform/linux/windows/WindowMatcher.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

/// When the entry was written to this disk; where the file system does not say, when its content
/// was made.
std::optional<Date> creationDate(const fs::path& file) {
    struct statx status{};
    if (::statx(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BTIME | STATX_MTIME, &status) !=
        0) {
        return std::nullopt;
    }
    const statx_timestamp& time =
        (status.stx_mask & STATX_BTIME) != 0 ? status.stx_btime : status.stx_mtime;
    return Date::since1970(static_cast<double>(time.tv_sec) + time.tv_nsec / 1e9);
}

} // namespace

/// The list as it was read last. Reading happens on other threads, one at a time.
class LinuxMetadata::List {
  public:
    explicit List(fs::path file) : file_(std::move(file)) {}

    /// Reads the file when it is another one than last time.
    std::shared_ptr<const RecentlyUsed::Summary> read() {
        const std::lock_guard lock(mutex_);
        struct stat status{};
        const bool isThere = ::stat(file_.c_str(), &status) == 0;
        const Stamp stamp{status.st_ino, status.st_size, status.st_mtim.tv_sec,
                          status.st_mtim.tv_nsec};
        if (summary_ == nullptr || !isThere || stamp != stamp_) {
            // A list that cannot be read is an empty one.
            auto summary = RecentlyUsed::read(file_);
            summary_ = std::make_shared<const RecentlyUsed::Summary>(
                summary ? *std::move(summary) : RecentlyUsed::Summary());
            stamp_ = stamp;
        }
        return summary_;
    }

  private:
    using Stamp = std::tuple<ino_t, off_t, time_t, long>;

    fs::path file_;
    std::mutex mutex_;
    Stamp stamp_;
    std::shared_ptr<const RecentlyUsed::Summary> summary_;
};

/// Tells which installed app an app of the list is. Apps enter themselves with a name for people
/// and a command, and toolkits derive both as they do for windows.
struct LinuxMetadata::Names {
    WindowMatcher matcher;
    std::map<std::string, BundleID> shown; ///< by folded name, "" where several have it

    explicit Names(const std::map<BundleID, DesktopEntry>& entries) : matcher(entries) {
        for (const auto& [id, entry] : entries) {
            if (entry.isShown) {
                const auto [place, isNew] = shown.emplace(Text::lowercased(entry.name), id);
                if (!isNew) {
                    place->second.clear();
                }
            }
        }
    }

    std::optional<BundleID> find(const RecentlyUsed::App& app) const {
        WindowEvidence program;
        program.gtkApplicationId = app.program;
        program.windowClass = app.program;
        program.process.programs = {app.program};
        if (auto id = matcher.match(program)) {
            return id;
        }
        WindowEvidence name;
        name.gtkApplicationId = app.name;
        name.windowClass = app.name;
        if (auto id = matcher.match(name)) {
            return id;
        }
        const auto named = shown.find(Text::lowercased(app.name));
        return named == shown.end() || named->second.empty() ? std::nullopt
                                                             : std::optional(named->second);
    }
};

LinuxMetadata::LinuxMetadata(Options options, std::shared_ptr<DesktopEntries> entries,
                             Scheduler& scheduler)
    : options_(std::move(options)), entries_(std::move(entries)), scheduler_(scheduler),
      list_(std::make_shared<List>(options_.recentlyUsed)) {}

LinuxMetadata::~LinuxMetadata() = default;

std::shared_ptr<const LinuxMetadata::Names> LinuxMetadata::names() {
    if (names_ == nullptr || namesRevision_ != entries_->revision()) {
        names_ = std::make_shared<const Names>(entries_->lastRead());
        namesRevision_ = entries_->revision();
    }
    return names_;
}

void LinuxMetadata::recall(const std::vector<InstalledApp>& apps,
                           std::function<void(AppRecords)> done) {
    scheduler_.inBackground([apps, names = names(), list = list_, most = options_.documents,
                             self = std::weak_ptr(life_),
                             done = std::move(done)]() mutable -> Scheduler::Task {
        AppRecords records;
        for (const InstalledApp& app : apps) {
            records[app.bundleID].created = creationDate(app.url);
        }
        // One app may be in the list under several names.
        std::map<BundleID, std::vector<RecentlyUsed::Document>> documents;
        for (const auto& [listed, uses] : *list->read()) {
            const auto id = names->find(listed);
            const auto record = id ? records.find(*id) : records.end();
            if (record == records.end()) {
                continue;
            }
            auto& last = record->second.lastUsed;
            last = last ? std::max(*last, uses.last) : uses.last;
            auto& all = documents[*id];
            all.insert(all.end(), uses.documents.begin(), uses.documents.end());
        }
        for (auto& [id, all] : documents) {
            std::ranges::stable_sort(all, std::ranges::greater(), &RecentlyUsed::Document::at);
            auto& out = records[id].recentDocuments;
            for (const RecentlyUsed::Document& document : all) {
                std::error_code error;
                if (out.size() < most && std::ranges::find(out, document.file) == out.end() &&
                    fs::exists(document.file, error)) {
                    out.push_back(document.file);
                }
            }
        }
        return [records = std::move(records), self, done = std::move(done)]() mutable {
            if (!self.expired()) {
                done(std::move(records));
            }
        };
    });
}

} // namespace vellory
