// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "Board/Board.h"
#include "Search/GridFilter.h"
#include "Support/UserDefaults.h"
#include "Support/Uuid.h"
#include "model/AppLibrary.h"
#include "model/AppSearch.h"
#include "model/BoardDocument.h"
#include "model/WorkspaceList.h"

namespace vellory {

/// What the grid shows of the board, and the way back from a place on the grid to the board: tiles
/// that are not shown keep their places in between.
///
/// Shown is what is installed, not hidden and let through by the filters: a Focus mode's and the
/// active workspace's. It follows the board, the apps and the workspaces by itself.
class ShownGrid : public QObject {
    Q_OBJECT

  public:
    using IsShown = std::function<bool(const BundleID&)>;

    /// The Focus mode's filter is kept in `defaults`.
    ShownGrid(const BoardDocument& document, const AppLibrary& library,
              const WorkspaceList& workspaces, UserDefaults& defaults, QObject* parent = nullptr);

    /// The tiles in order; folders with shown apps only, and never empty.
    const std::vector<Tile>& tiles() const { return tiles_; }
    /// A folder as the grid shows it, with its shown apps only.
    std::optional<Folder> folder(const Uuid& id) const;
    /// Installed apps on the board, shown or not, whose name matches, best first; all of them for
    /// a blank query.
    std::vector<BundleID> search(const std::string& query) const { return search_.find(query); }

    /// Shows everything in spite of the filters.
    bool showAllApps() const { return showAllApps_; }
    void setShowAllApps(bool on);
    /// Whether a filter keeps apps from the grid, or would.
    bool hasFilter() const;
    /// What a Focus mode of the desktop lets through; kept over restarts.
    const std::optional<GridFilter>& focusFilter() const { return focusFilter_; }
    void setFocusFilter(const std::optional<GridFilter>& filter);

    /// The index on `board` before which something put at `place` among the shown tiles belongs;
    /// the end of the board for a place past the last.
    std::ptrdiff_t boardIndex(const Board& board, int place) const;
    /// Moves `app` within the apps of a folder to `place` among those that are shown, counted
    /// before the move. Nothing happens to a list that does not hold it.
    void moveWithin(std::vector<BundleID>& apps, const BundleID& app, int place) const;

    /// Those of any tiles that hold apps for which `isShown` says so, in order. A folder of which
    /// nothing is left is dropped.
    static std::vector<Tile> shownTiles(const std::vector<Tile>& tiles, const IsShown& isShown);

  Q_SIGNALS:
    /// `tiles` was worked out anew.
    void changed();

  private:
    void refresh();
    bool isShown(const BundleID& id) const;
    void refreshSearch();

    const BoardDocument& document_;
    const AppLibrary& library_;
    const WorkspaceList& workspaces_;
    UserDefaults& defaults_;
    AppSearch search_;
    bool showAllApps_ = false;
    std::optional<GridFilter> focusFilter_;
    /// What the active workspace lets through; nothing when it does not restrict the grid.
    std::optional<std::set<BundleID>> allowed_;
    std::vector<Tile> tiles_;
};

} // namespace vellory
