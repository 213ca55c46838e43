// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/LinuxAppCatalogue.h"

#include "platform/linux/CategoryMap.h"
#include "platform/linux/DesktopEntryFile.h"

namespace vellory {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t maxActions = 64;

/// Resolves the symbolic links of many files of few folders.
class Resolver {
  public:
    fs::path operator()(const fs::path& file) {
        std::error_code error;
        if (fs::is_symlink(fs::symlink_status(file, error))) {
            fs::path resolved = fs::canonical(file, error);
            return error ? file : resolved;
        }
        const fs::path folder = file.parent_path();
        auto known = folders_.find(folder);
        if (known == folders_.end()) {
            fs::path resolved = fs::canonical(folder, error);
            known = folders_.emplace(folder, error ? folder : std::move(resolved)).first;
        }
        return known->second / file.filename();
    }

  private:
    std::map<fs::path, fs::path> folders_;
};

} // namespace

LinuxAppCatalogue::LinuxAppCatalogue(std::shared_ptr<DesktopEntries> entries,
                                     std::string_view sortLocale)
    : entries_(std::move(entries)), collator_(sortLocale) {}

std::vector<fs::path> LinuxAppCatalogue::roots(const std::vector<fs::path>& extraFolders) const {
    return entries_->roots(extraFolders);
}

std::vector<InstalledApp> LinuxAppCatalogue::scan(const std::vector<fs::path>& roots) {
    entries_->read(roots);
    std::vector<InstalledApp> apps;
    Resolver resolved;
    for (const auto& [id, entry] : entries_->all()) {
        if (entry.isShown) {
            apps.push_back({id, entry.name, resolved(entry.file)});
        }
    }
    Text::sortByName(apps, collator_, [](const InstalledApp& app) { return app.name; });
    return apps;
}

std::optional<std::string> LinuxAppCatalogue::category(const InstalledApp& app) const {
    const glib::KeyFile entry = DesktopEntryFile::load(app.url);
    if (entry == nullptr) {
        return std::nullopt;
    }
    return appStoreCategory(DesktopEntryFile::list(entry.get(), G_KEY_FILE_DESKTOP_KEY_CATEGORIES));
}

std::vector<AppAction> LinuxAppCatalogue::actions(const InstalledApp& app) const {
    const glib::KeyFile entry = DesktopEntryFile::load(app.url);
    std::vector<AppAction> actions;
    if (entry == nullptr) {
        return actions;
    }
    for (std::string& id : DesktopEntryFile::list(entry.get(), G_KEY_FILE_DESKTOP_KEY_ACTIONS)) {
        std::string name = DesktopEntryFile::localized(
            entry.get(), DesktopEntryFile::actionGroup(id), G_KEY_FILE_DESKTOP_KEY_NAME);
        if (!name.empty() && actions.size() < maxActions) {
            actions.push_back({std::move(id), std::move(name)});
        }
    }
    return actions;
}

std::optional<std::string> LinuxAppCatalogue::displayName(const BundleID& id) const {
    const DesktopEntry* entry = entries_->find(id);
    return entry == nullptr ? std::nullopt : std::optional(entry->name);
}

} // namespace vellory
