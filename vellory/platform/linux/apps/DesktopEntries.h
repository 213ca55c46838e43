// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <future>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// What the program keeps of a desktop entry: enough to list the app and to know its windows.
struct DesktopEntry {
    BundleID id;                ///< the desktop-file id without ".desktop"
    std::filesystem::path file; ///< where it was found; symbolic links not resolved
    std::string name;           ///< in the user's language, fit to be shown
    std::string windowClass;    ///< StartupWMClass, or ""
    std::string program;        ///< the program that the Exec line starts, as written there
    bool isShown = false;       ///< wants to be in this desktop's menus
    std::vector<std::string> categories{};
    std::vector<std::string> mimeTypes{};
    /// What the entry says in words (keywords, generic name, comment; and the untranslated name),
    /// in the user's language and as its author wrote it, which is mostly English. None twice.
    std::vector<std::string> texts{};
};

/// The desktop entries of this machine as the last `read` found them. Main thread.
class DesktopEntries {
  public:
    struct Options {
        SessionEnvironment environment;
        /// When set, the one folder of entries that stands for all others.
        std::optional<std::filesystem::path> onlyFolder;
    };

    explicit DesktopEntries(Options options);

    /// Begins to read the roots without extra folders on another thread, for a first `read` of
    /// them that is to follow: a start has other things to do meanwhile.
    void readAhead();

    /// The folders of entries in order of precedence: the user's, the system's, those of Flatpak
    /// and Snap where the session does not name them already, then `extraFolders`.
    std::vector<std::filesystem::path>
    roots(const std::vector<std::filesystem::path>& extraFolders = {}) const;

    /// The folders of the shared MIME database, the most important first.
    std::vector<std::filesystem::path> mimeFolders() const;

    /// Reads all entries below `roots`. The first entry of an id wins, also one that only says that
    /// the app is deleted (`Hidden`). Entries that cannot be started are left out.
    void read(const std::vector<std::filesystem::path>& roots);

    /// By id. Reads the roots without extra folders when nothing has been read yet.
    const std::map<BundleID, DesktopEntry>& all();
    const DesktopEntry* find(const BundleID& id);

    /// As the last `read` found them; none before the first.
    const std::map<BundleID, DesktopEntry>& lastRead() const { return entries_; }

    /// The folders that the last `read` looked into: its roots, also those that do not exist, and
    /// the folders within them.
    const std::vector<std::filesystem::path>& folders() const { return folders_; }

    /// Grows with every `read`: whoever derives something from `all` sees that it is out of date.
    unsigned revision() const { return revision_; }

  private:
    /// What one reading found.
    struct Reading {
        std::map<BundleID, DesktopEntry> entries;
        std::vector<std::filesystem::path> folders;
        /// When what is in `folders` last changed, as they were before they were looked into.
        std::vector<std::filesystem::file_time_type> changed;
    };
    static Reading readingOf(const std::vector<std::filesystem::path>& roots,
                             const std::vector<std::string>& desktopNames);
    /// What was read ahead, when it is that and still true.
    std::optional<Reading> takeAhead(const std::vector<std::filesystem::path>& roots);

    Options options_;
    std::vector<std::string> desktopNames_;
    std::map<BundleID, DesktopEntry> entries_;
    std::vector<std::filesystem::path> folders_;
    std::vector<std::filesystem::path> rootsAhead_;
    std::future<Reading> ahead_; ///< of `rootsAhead_`
    unsigned revision_ = 0;
};

} // namespace vellory
