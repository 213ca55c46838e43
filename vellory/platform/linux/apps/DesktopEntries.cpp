// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/DesktopEntries.h"

#include <algorithm>
#include <set>
#include <utility>

#include <sys/stat.h>

#include <gio/gdesktopappinfo.h>

#include "Support/Text.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/apps/ChangeTime.h"
#include "platform/linux/apps/DesktopEntryFile.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr int maxFolderDepth = 6;
/// Folders within all roots together; honest systems have a dozen.
constexpr std::size_t maxFoldersSeen = 500;
constexpr std::size_t maxEntries = 20'000;
/// Categories or types of one entry; office suites open about a hundred types.
constexpr std::size_t maxListed = 500;
/// Bytes looked at of one text; keywords of an honest entry stay below.
constexpr std::size_t maxText = 2000;
constexpr std::string_view entrySuffix = ".desktop";

struct Found {
    BundleID id;
    fs::path file;
};

bool contains(const auto& range, const auto& value) {
    return std::ranges::find(range, value) != std::ranges::end(range);
}

bool isPlainName(std::string_view name) {
    return Text::isValidUtf8(name) && std::ranges::none_of(name, [](char c) {
               return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
           });
}

/// Looks for entries below one root.
class Walk {
  public:
    /// `folders` are those that have been looked into, below other roots too, and `changed` when
    /// they had last changed.
    Walk(const fs::path& root, std::vector<fs::path>& folders,
         std::vector<fs::file_time_type>& changed)
        : folders_(folders), changed_(changed) {
        lookInto({root, "", 0});
        // Not before: an app keeps the id that it has by its own folder.
        for (std::size_t i = 0; i < links_.size(); ++i) {
            if (folders_.size() < maxFoldersSeen) {
                lookInto(Folder(links_[i]));
            }
        }
    }

    const std::vector<Found>& found() const { return found_; }

  private:
    struct Folder {
        fs::path path;
        std::string prefix; ///< what the ids of its entries begin with
        int depth;
    };
    struct Content {
        std::vector<std::string> files;
        std::vector<std::string> folders;
    };

    /// Files before folders, each in the order of their names, so that of two files with one id
    /// always the same one is met first.
    void lookInto(const Folder& folder) {
        struct stat info{};
        const bool exists = ::stat(folder.path.c_str(), &info) == 0;
        // Symbolic links may lead into one folder any number of times, also from within itself.
        if (exists && !visited_.emplace(info.st_dev, info.st_ino).second) {
            return;
        }
        folders_.push_back(folder.path);
        changed_.push_back(changeTime(folder.path));
        const Content content = list(folder.path);
        for (const std::string& name : content.files) {
            found_.push_back({folder.prefix + name.substr(0, name.size() - entrySuffix.size()),
                              folder.path / name});
        }
        for (const std::string& name : content.folders) {
            Folder within{folder.path / name, folder.prefix + name + '-', folder.depth + 1};
            std::error_code ignored;
            if (within.depth > maxFolderDepth || folders_.size() >= maxFoldersSeen) {
                break;
            }
            if (!fs::is_symlink(within.path, ignored)) {
                lookInto(within);
            } else if (links_.size() < maxEntries) {
                links_.push_back(std::move(within));
            }
        }
    }

    Content list(const fs::path& folder) const {
        Content content;
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            std::string name = entry->path().filename().string();
            if (!isPlainName(name)) {
                continue;
            }
            std::error_code ignored;
            if (name.ends_with(entrySuffix) && name.size() > entrySuffix.size()) {
                content.files.push_back(std::move(name));
            } else if (!name.starts_with('.') && entry->is_directory(ignored)) {
                content.folders.push_back(std::move(name));
            }
            if (content.files.size() + content.folders.size() + found_.size() > maxEntries) {
                break;
            }
        }
        std::ranges::sort(content.files);
        std::ranges::sort(content.folders);
        return content;
    }

    std::vector<fs::path>& folders_;
    std::vector<fs::file_time_type>& changed_;
    std::set<std::pair<dev_t, ino_t>> visited_;
    std::vector<Folder> links_; ///< to folders, not looked into yet
    std::vector<Found> found_;
};

/// Whether the entry wants to be in the menus of the desktop with these names: the first name that
/// either of its two lists mentions decides.
bool isShownIn(GKeyFile* entry, const std::vector<std::string>& desktopNames) {
    if (DesktopEntryFile::flag(entry, G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY)) {
        return false;
    }
    const auto only = DesktopEntryFile::list(entry, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    const auto never = DesktopEntryFile::list(entry, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    for (const std::string& name : desktopNames) {
        if (contains(only, name)) {
            return true;
        }
        if (contains(never, name)) {
            return false;
        }
    }
    return only.empty();
}

/// Adds what `key` says in the user's language, in English and as its author wrote it. A list
/// stays one text: only its words count.
void addTexts(GKeyFile* file, const char* key, std::vector<std::string>& out) {
    const char* const group = DesktopEntryFile::mainGroup;
    for (const std::string& value : {DesktopEntryFile::translation(file, group, key),
                                     DesktopEntryFile::translation(file, group, key, "en"),
                                     DesktopEntryFile::text(file, group, key)}) {
        std::string text = Text::repairedUtf8(std::string_view(value).substr(0, maxText));
        if (!text.empty() && !contains(out, text)) {
            out.push_back(std::move(text));
        }
    }
}

/// A list of the entry, cut where no honest one is that long.
std::vector<std::string> shortList(GKeyFile* file, const char* key) {
    std::vector<std::string> values = DesktopEntryFile::list(file, key);
    values.resize(std::min(values.size(), maxListed));
    return values;
}

/// The entry in `found`, when it is one that can be started; what GIO refuses (another type, a
/// program or TryExec that is not there) cannot.
std::optional<DesktopEntry> read(const Found& found, GKeyFile* file,
                                 const std::vector<std::string>& desktopNames) {
    const glib::Object<GDesktopAppInfo> info(g_desktop_app_info_new_from_keyfile(file));
    if (info == nullptr) {
        return std::nullopt;
    }
    DesktopEntry entry;
    entry.id = found.id;
    entry.file = found.file;
    entry.program = glib::text(g_app_info_get_executable(G_APP_INFO(info.get())));
    if (entry.program.empty() &&
        !DesktopEntryFile::flag(file, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE)) {
        return std::nullopt;
    }
    entry.name =
        DesktopEntryFile::localized(file, DesktopEntryFile::mainGroup, G_KEY_FILE_DESKTOP_KEY_NAME);
    if (entry.name.empty()) {
        entry.name = found.id;
    }
    entry.windowClass = glib::text(g_desktop_app_info_get_startup_wm_class(info.get()));
    entry.isShown = isShownIn(file, desktopNames);
    if (entry.isShown) {
        entry.categories = shortList(file, G_KEY_FILE_DESKTOP_KEY_CATEGORIES);
        entry.mimeTypes = shortList(file, G_KEY_FILE_DESKTOP_KEY_MIME_TYPE);
        for (const char* key : {G_KEY_FILE_DESKTOP_KEY_NAME, G_KEY_FILE_DESKTOP_KEY_GENERIC_NAME,
                                "Keywords", G_KEY_FILE_DESKTOP_KEY_COMMENT}) {
            addTexts(file, key, entry.texts);
        }
    }
    return entry;
}

} // namespace

DesktopEntries::DesktopEntries(Options options)
    : options_(std::move(options)), desktopNames_(options_.environment.desktopNames()) {}

std::vector<fs::path> DesktopEntries::roots(const std::vector<fs::path>& extraFolders) const {
    if (options_.onlyFolder) {
        return {*options_.onlyFolder};
    }
    const SessionEnvironment& environment = options_.environment;
    std::vector<fs::path> roots;
    const auto add = [&](const fs::path& folder) {
        const fs::path plain = folder.lexically_normal();
        if (!contains(roots, plain)) {
            roots.push_back(plain);
        }
    };
    add(environment.dataHome() / "applications");
    for (const fs::path& folder : environment.dataDirs()) {
        add(folder / "applications");
    }
    add(environment.dataHome() / "flatpak/exports/share/applications");
    add("/var/lib/flatpak/exports/share/applications");
    add("/var/lib/snapd/desktop/applications");
    for (const fs::path& folder : extraFolders) {
        add(folder);
    }
    return roots;
}

std::vector<fs::path> DesktopEntries::mimeFolders() const {
    std::vector<fs::path> folders{options_.environment.dataHome() / "mime"};
    for (const fs::path& folder : options_.environment.dataDirs()) {
        folders.push_back(folder / "mime");
    }
    return folders;
}

void DesktopEntries::readAhead() {
    rootsAhead_ = roots();
    ahead_ = std::async(std::launch::async, [roots = rootsAhead_, names = desktopNames_] {
        return readingOf(roots, names);
    });
}

std::optional<DesktopEntries::Reading>
DesktopEntries::takeAhead(const std::vector<fs::path>& roots) {
    if (!ahead_.valid()) {
        return std::nullopt;
    }
    Reading reading = ahead_.get();
    std::vector<fs::file_time_type> changedNow;
    for (const fs::path& folder : reading.folders) {
        changedNow.push_back(changeTime(folder));
    }
    return roots == rootsAhead_ && changedNow == reading.changed ? std::optional(std::move(reading))
                                                                 : std::nullopt;
}

void DesktopEntries::read(const std::vector<fs::path>& roots) {
    std::optional<Reading> reading = takeAhead(roots);
    if (!reading) {
        reading = readingOf(roots, desktopNames_);
    }
    entries_ = std::move(reading->entries);
    folders_ = std::move(reading->folders);
    ++revision_;
}

DesktopEntries::Reading DesktopEntries::readingOf(const std::vector<fs::path>& roots,
                                                  const std::vector<std::string>& desktopNames) {
    Reading reading;
    std::set<BundleID> settled;
    for (const fs::path& root : roots) {
        const Walk walk(root, reading.folders, reading.changed);
        for (const Found& candidate : walk.found()) {
            if (settled.contains(candidate.id)) {
                continue;
            }
            const glib::KeyFile file = DesktopEntryFile::load(candidate.file);
            if (file == nullptr) {
                continue; // Damaged: a later root may hold a sound one.
            }
            settled.insert(candidate.id);
            if (DesktopEntryFile::flag(file.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN)) {
                continue;
            }
            if (auto entry = vellory::read(candidate, file.get(), desktopNames)) {
                reading.entries.emplace(candidate.id, std::move(*entry));
            }
        }
    }
    return reading;
}

const std::map<BundleID, DesktopEntry>& DesktopEntries::all() {
    if (revision_ == 0) {
        read(roots());
    }
    return entries_;
}

const DesktopEntry* DesktopEntries::find(const BundleID& id) {
    const auto found = all().find(id);
    return found == entries_.end() ? nullptr : &found->second;
}

} // namespace vellory
