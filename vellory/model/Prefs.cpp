// SPDX-License-Identifier: Apache-2.0
#include "model/Prefs.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace vellory {

namespace {

/// Stored: append only, never rename.
struct StoredMode {
    std::string_view name;
    Prefs::SmartListMode mode;
};
constexpr auto smartListModes =
    std::to_array<StoredMode>({{"suggested", Prefs::SmartListMode::suggested},
                               {"recent", Prefs::SmartListMode::recent},
                               {"mostUsed", Prefs::SmartListMode::mostUsed},
                               {"newest", Prefs::SmartListMode::newest}});

} // namespace

Prefs::Prefs(UserDefaults& defaults, QObject* parent) : QObject(parent), defaults_(defaults) {}

bool Prefs::showInDock() const {
    return flag("showInDock", false);
}
void Prefs::setShowInDock(bool on) {
    setFlag("showInDock", false, on);
}

bool Prefs::hasSeenWelcome() const {
    return flag("hasSeenWelcome", false);
}
void Prefs::setHasSeenWelcome(bool on) {
    setFlag("hasSeenWelcome", false, on);
}

bool Prefs::showLabels() const {
    return flag("showLabels", true);
}
void Prefs::setShowLabels(bool on) {
    setFlag("showLabels", true, on);
}

int Prefs::iconSize() const {
    return count("iconSize", iconSizes);
}
void Prefs::setIconSize(int size) {
    setCount("iconSize", iconSizes, size);
}

int Prefs::compactIconSize() const {
    return count("compactIconSize", compactIconSizes);
}
void Prefs::setCompactIconSize(int size) {
    setCount("compactIconSize", compactIconSizes, size);
}

int Prefs::columns() const {
    return count("columns", columnCounts);
}
void Prefs::setColumns(int value) {
    setCount("columns", columnCounts, value);
}

int Prefs::rows() const {
    return count("rows", rowCounts);
}
void Prefs::setRows(int value) {
    setCount("rows", rowCounts, value);
}

int Prefs::compactColumns() const {
    return count("compactColumns", compactColumnCounts);
}
void Prefs::setCompactColumns(int value) {
    setCount("compactColumns", compactColumnCounts, value);
}

int Prefs::compactRows() const {
    return count("compactRows", compactRowCounts);
}
void Prefs::setCompactRows(int value) {
    setCount("compactRows", compactRowCounts, value);
}

bool Prefs::showBadges() const {
    return flag("showBadges", true);
}
void Prefs::setShowBadges(bool on) {
    setFlag("showBadges", true, on);
}

std::vector<std::filesystem::path> Prefs::extraFolders() const {
    std::vector<std::filesystem::path> folders;
    for (const std::string& text :
         defaults_.strings("extraFolders").value_or(std::vector<std::string>{})) {
        if (std::filesystem::path folder(text); folder.is_absolute()) {
            folders.push_back(std::move(folder));
        }
    }
    return folders;
}

void Prefs::setExtraFolders(const std::vector<std::filesystem::path>& folders) {
    if (folders == extraFolders()) {
        return;
    }
    std::vector<std::string> texts;
    for (const auto& folder : folders) {
        texts.push_back(folder.string());
    }
    store("extraFolders", texts);
}

std::set<BundleID> Prefs::protectedApps() const {
    const auto apps = defaults_.strings("protectedApps").value_or(std::vector<std::string>{});
    return {apps.begin(), apps.end()};
}

void Prefs::setProtectedApps(const std::set<BundleID>& apps) {
    if (apps != protectedApps()) {
        store("protectedApps", std::vector<std::string>(apps.begin(), apps.end()));
    }
}

bool Prefs::perDisplayLayouts() const {
    return flag("perDisplayLayouts", false);
}
void Prefs::setPerDisplayLayouts(bool on) {
    setFlag("perDisplayLayouts", false, on);
}

Prefs::DisplayMode Prefs::displayMode() const {
    return defaults_.string("displayMode") == "list" ? DisplayMode::list : DisplayMode::pages;
}

void Prefs::setDisplayMode(DisplayMode mode) {
    if (mode != displayMode()) {
        store("displayMode", std::string(mode == DisplayMode::list ? "list" : "pages"));
    }
}

Prefs::SmartListMode Prefs::smartListMode() const {
    if (!flag("showSmartList", true)) {
        return SmartListMode::off;
    }
    const auto stored = defaults_.string("smartListMode");
    const auto known = std::ranges::find(
        smartListModes, stored ? std::string_view(*stored) : std::string_view(), &StoredMode::name);
    return known == smartListModes.end() ? SmartListMode::suggested : known->mode;
}

void Prefs::setSmartListMode(SmartListMode mode) {
    if (mode == smartListMode()) {
        return;
    }
    const auto known = std::ranges::find(smartListModes, mode, &StoredMode::mode);
    if (known != smartListModes.end()) {
        defaults_.set("smartListMode", std::string(known->name));
    }
    defaults_.set("showSmartList", known != smartListModes.end());
    Q_EMIT changed("smartListMode");
}

std::set<BundleID> Prefs::smartListExcluded() const {
    const auto apps = defaults_.strings("smartListExcluded").value_or(std::vector<std::string>{});
    return {apps.begin(), apps.end()};
}

void Prefs::setSmartListExcluded(const std::set<BundleID>& apps) {
    if (apps != smartListExcluded()) {
        store("smartListExcluded", std::vector<std::string>(apps.begin(), apps.end()));
    }
}

WorkspaceSession::CloseApps Prefs::closeApps() const {
    return closeAppsFromRawValue(defaults_.string("closeApps").value_or(""))
        .value_or(WorkspaceSession::CloseApps::quit);
}

void Prefs::setCloseApps(WorkspaceSession::CloseApps choice) {
    if (choice != closeApps()) {
        store("closeApps", std::string(rawValue(choice)));
    }
}

// Stored as texts such as "<identifier>=Ctrl+Alt+W".
std::map<std::string, std::string> Prefs::workspaceShortcuts() const {
    std::map<std::string, std::string> shortcuts;
    for (const std::string& entry :
         defaults_.strings("workspaceShortcuts").value_or(std::vector<std::string>{})) {
        if (const auto middle = entry.find('='); middle != std::string::npos) {
            shortcuts[entry.substr(0, middle)] = entry.substr(middle + 1);
        }
    }
    return shortcuts;
}

void Prefs::setWorkspaceShortcuts(const std::map<std::string, std::string>& shortcuts) {
    if (shortcuts == workspaceShortcuts()) {
        return;
    }
    std::vector<std::string> entries;
    for (const auto& [workspace, keys] : shortcuts) {
        entries.push_back(std::string(workspace).append("=").append(keys));
    }
    store("workspaceShortcuts", entries);
}

bool Prefs::readFocusDirectly() const {
    return flag("readFocusDirectly", false);
}
void Prefs::setReadFocusDirectly(bool on) {
    setFlag("readFocusDirectly", false, on);
}

bool Prefs::keepOpenAfterLaunch() const {
    return flag("keepOpenAfterLaunch", false);
}
void Prefs::setKeepOpenAfterLaunch(bool on) {
    setFlag("keepOpenAfterLaunch", false, on);
}

bool Prefs::reduceMotion() const {
    return flag("reduceMotion", false);
}
void Prefs::setReduceMotion(bool on) {
    setFlag("reduceMotion", false, on);
}

bool Prefs::flag(const char* key, bool fallback) const {
    return defaults_.boolean(key).value_or(fallback);
}

void Prefs::setFlag(const char* key, bool fallback, bool on) {
    if (on != flag(key, fallback)) {
        store(key, on);
    }
}

int Prefs::count(const char* key, const Range& range) const {
    const std::int64_t stored = defaults_.integer(key).value_or(range.fallback);
    return static_cast<int>(std::clamp<std::int64_t>(stored, range.least, range.most));
}

void Prefs::setCount(const char* key, const Range& range, int value) {
    const int usable = std::clamp(value, range.least, range.most);
    if (usable != count(key, range)) {
        store(key, std::int64_t{usable});
    }
}

void Prefs::store(const char* key, const UserDefaults::Value& value) {
    defaults_.set(key, value);
    Q_EMIT changed(key);
}

} // namespace vellory
