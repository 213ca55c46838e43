// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/LinuxAppCatalogue.h"

#include <algorithm>
#include <array>

#include "platform/linux/apps/CategoryMap.h"
#include "platform/linux/apps/DesktopEntryFile.h"

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
            if (error) {
                resolved = folder;
            }
            known = folders_.emplace(folder, std::move(resolved)).first;
        }
        return known->second / file.filename();
    }

  private:
    std::map<fs::path, fs::path> folders_;
};

/// A type of documents as a bundle would declare it. Where a whole family of types has a name that
/// people use, that is its name.
PropertyList::Dictionary documentType(std::string_view mimeType,
                                      const std::vector<std::string>& extensions) {
    constexpr std::array<std::string_view, 4> families{"audio", "font", "image", "video"};
    PropertyList::Dictionary type;
    PropertyList::Array list;
    for (const std::string& extension : extensions) {
        list.push_back({extension});
    }
    type["CFBundleTypeExtensions"] = {std::move(list)};
    const std::string_view family = mimeType.substr(0, mimeType.find('/'));
    if (std::ranges::find(families, family) != families.end()) {
        type["CFBundleTypeName"] = {std::string(family)};
    }
    return type;
}

} // namespace

LinuxAppCatalogue::LinuxAppCatalogue(std::shared_ptr<DesktopEntries> entries,
                                     std::string_view sortLocale)
    : entries_(std::move(entries)), globs_(entries_->mimeFolders()), collator_(sortLocale) {}

std::vector<fs::path> LinuxAppCatalogue::roots(const std::vector<fs::path>& extraFolders) const {
    return entries_->roots(extraFolders);
}

std::vector<InstalledApp> LinuxAppCatalogue::scan(const std::vector<fs::path>& roots) {
    entries_->read(roots);
    globs_.read();
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

std::vector<fs::path> LinuxAppCatalogue::scannedFolders() const {
    return entries_->folders();
}

std::optional<std::string> LinuxAppCatalogue::category(const InstalledApp& app) const {
    const glib::KeyFile entry = DesktopEntryFile::load(app.url);
    if (entry == nullptr) {
        return std::nullopt;
    }
    return appStoreCategory(DesktopEntryFile::list(entry.get(), G_KEY_FILE_DESKTOP_KEY_CATEGORIES));
}

AppInfo LinuxAppCatalogue::info(const InstalledApp& app) const {
    const auto& entries = entries_->lastRead();
    const auto found = entries.find(app.bundleID);
    if (found == entries.end()) {
        return {};
    }
    const DesktopEntry& entry = found->second;
    AppInfo info{.dictionary = {}, .texts = entry.texts};
    if (auto category = appStoreCategory(entry.categories)) {
        info.dictionary["LSApplicationCategoryType"] = {std::move(*category)};
    }
    PropertyList::Array types;
    for (const std::string& type : entry.mimeTypes) {
        types.push_back({documentType(type, globs_.extensions(type))});
    }
    if (!types.empty()) {
        info.dictionary["CFBundleDocumentTypes"] = {std::move(types)};
    }
    return info;
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

std::optional<InstalledApp> LinuxAppCatalogue::find(const BundleID& id) const {
    const DesktopEntry* entry = entries_->find(id);
    return entry == nullptr ? std::nullopt
                            : std::optional(InstalledApp{id, entry->name, Resolver()(entry->file)});
}

} // namespace vellory
