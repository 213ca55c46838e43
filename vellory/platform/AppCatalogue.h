// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/PropertyList.h"

namespace vellory {

/// Something an app offers beside being opened, such as "New Private Window".
struct AppAction {
    std::string id;   ///< what `RunningApps::perform` takes
    std::string name; ///< in the user's language

    friend bool operator==(const AppAction&, const AppAction&) = default;
};

/// What an app says of itself, as `AppKeywords` takes it.
struct AppInfo {
    /// In the keys of a bundle's information dictionary: LSApplicationCategoryType (a text) and
    /// CFBundleDocumentTypes (dictionaries with CFBundleTypeExtensions and CFBundleTypeName).
    PropertyList::Dictionary dictionary;
    /// Names, descriptions and words by which people may look for it, in any language.
    std::vector<std::string> texts;

    friend bool operator==(const AppInfo&, const AppInfo&) = default;
};

/// The apps that are installed and can be shown to the user. Main thread.
class AppCatalogue {
  public:
    virtual ~AppCatalogue() = default;

    /// The folders that are scanned, in order of precedence; those that do not exist included.
    /// `extraFolders` (from the settings) come last.
    virtual std::vector<std::filesystem::path>
    roots(const std::vector<std::filesystem::path>& extraFolders) const = 0;

    /// All apps below `roots`, one for each identifier (an earlier root wins), sorted by name in
    /// the order of the user's language. A root that cannot be read contributes nothing.
    virtual std::vector<InstalledApp> scan(const std::vector<std::filesystem::path>& roots) = 0;

    /// The folders that the last scan looked into, and those of its roots that do not exist: where
    /// apps come and go.
    virtual std::vector<std::filesystem::path> scannedFolders() const = 0;

    /// The app's App Store category, such as "public.app-category.developer-tools".
    virtual std::optional<std::string> category(const InstalledApp& app) const = 0;

    /// What the last scan found an app to say of itself; empty for one it did not find.
    virtual AppInfo info(const InstalledApp& app) const = 0;

    /// What else the app offers, in its own order.
    virtual std::vector<AppAction> actions(const InstalledApp& app) const = 0;

    /// An app that need not be among those scanned (one that hides itself from menus); nothing when
    /// the platform knows no such app.
    virtual std::optional<InstalledApp> find(const BundleID& id) const = 0;
};

} // namespace vellory
