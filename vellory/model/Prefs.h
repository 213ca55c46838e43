// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "Support/UserDefaults.h"
#include "Workspaces/WorkspaceSession.h"

namespace vellory {

/// The settings, each under the key of its name. What is read is always usable: a key that is
/// missing or holds another type gives the default, and numbers are clamped to their range.
class Prefs : public QObject {
    Q_OBJECT

  public:
    enum class DisplayMode {
        pages, ///< stored as "pages"
        list   ///< stored as "list": the whole grid on one page that scrolls
    };

    /// By which rule the apps above the grid are chosen. Stored by name, and "off" by a setting of
    /// its own so that switching the list on again brings back the rule.
    enum class SmartListMode { suggested, recent, mostUsed, newest, off };

    struct Range {
        int least;
        int most;
        int fallback;
    };
    static constexpr Range iconSizes{48, 160, 96};
    static constexpr Range compactIconSizes{48, 160, 64};
    static constexpr Range columnCounts{1, 20, 7};
    static constexpr Range rowCounts{1, 20, 5};
    static constexpr Range compactColumnCounts{1, 20, 5};
    static constexpr Range compactRowCounts{1, 20, 4};

    explicit Prefs(UserDefaults& defaults, QObject* parent = nullptr);

    /// Whether the program appears in the dock or task bar. Off unless set.
    bool showInDock() const;
    void setShowInDock(bool on);

    bool hasSeenWelcome() const;
    void setHasSeenWelcome(bool on);

    /// Names under the icons. On unless set.
    bool showLabels() const;
    void setShowLabels(bool on);

    // In device-independent pixels.
    int iconSize() const;
    void setIconSize(int size);
    int compactIconSize() const;
    void setCompactIconSize(int size);

    // Tiles on a page: at most so many rows, as far as they fit.
    int columns() const;
    void setColumns(int count);
    int rows() const;
    void setRows(int count);
    int compactColumns() const;
    void setCompactColumns(int count);
    int compactRows() const;
    void setCompactRows(int count);

    /// On unless set.
    bool showBadges() const;
    void setShowBadges(bool on);

    /// Folders scanned for apps after the platform's own; absolute paths only.
    std::vector<std::filesystem::path> extraFolders() const;
    void setExtraFolders(const std::vector<std::filesystem::path>& folders);

    /// Apps the user wants left alone; see also `AppModel::protectedApps`.
    std::set<BundleID> protectedApps() const;
    void setProtectedApps(const std::set<BundleID>& apps);

    /// Each display keeps a board of its own.
    bool perDisplayLayouts() const;
    void setPerDisplayLayouts(bool on);

    DisplayMode displayMode() const;
    void setDisplayMode(DisplayMode mode);

    /// The suggested apps unless set.
    SmartListMode smartListMode() const;
    void setSmartListMode(SmartListMode mode);
    /// Apps that the user does not want in that list.
    std::set<BundleID> smartListExcluded() const;
    void setSmartListExcluded(const std::set<BundleID>& apps);

    /// What closing a workspace does with the apps that it launched. Unless set they are quit:
    /// closing undoes what opening did.
    WorkspaceSession::CloseApps closeApps() const;
    void setCloseApps(WorkspaceSession::CloseApps choice);

    /// The shortcut that opens a workspace, by the text of its identifier.
    std::map<std::string, std::string> workspaceShortcuts() const;
    void setWorkspaceShortcuts(const std::map<std::string, std::string>& shortcuts);

    /// Whether the desktop's Focus is read, so that it can open workspaces. Off unless set.
    bool readFocusDirectly() const;
    void setReadFocusDirectly(bool on);

    bool keepOpenAfterLaunch() const;
    void setKeepOpenAfterLaunch(bool on);

    bool reduceMotion() const;
    void setReduceMotion(bool on);

  Q_SIGNALS:
    /// The setting under `key` has another value now.
    void changed(const std::string& key);

  private:
    bool flag(const char* key, bool fallback) const;
    void setFlag(const char* key, bool fallback, bool on);
    int count(const char* key, const Range& range) const;
    void setCount(const char* key, const Range& range, int value);
    void store(const char* key, const UserDefaults::Value& value);

    UserDefaults& defaults_;
};

} // namespace vellory
