// SPDX-License-Identifier: Apache-2.0
#include "model/ShownGrid.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace vellory {

ShownGrid::ShownGrid(const BoardDocument& document, const AppLibrary& library,
                     const WorkspaceList& workspaces, UserDefaults& defaults, QObject* parent)
    : QObject(parent), document_(document), library_(library), workspaces_(workspaces),
      defaults_(defaults), focusFilter_(GridFilter::load(defaults)) {
    connect(&document_, &BoardDocument::changed, this, &ShownGrid::refresh);
    connect(&library_, &AppLibrary::changed, this, &ShownGrid::refresh);
    connect(&workspaces_, &WorkspaceList::changed, this, &ShownGrid::refresh);
    connect(&workspaces_, &WorkspaceList::activeChanged, this, &ShownGrid::refresh);
}

void ShownGrid::refresh() {
    allowed_.reset();
    const Workspace* workspace = workspaces_.activeWorkspace();
    if (!showAllApps_ && workspace != nullptr && workspace->focusGrid) {
        const auto ids = workspace->appIDs();
        allowed_.emplace(ids.begin(), ids.end());
    }
    const std::vector<Tile>& all = document_.board().tiles;
    const bool isFiltered = !showAllApps_ && focusFilter_;
    tiles_ = shownTiles(isFiltered ? focusFilter_->tiles(all, workspaces_.all()) : all,
                        [this](const BundleID& id) { return isShown(id); });
    refreshSearch();
    Q_EMIT changed();
}

bool ShownGrid::isShown(const BundleID& id) const {
    return library_.app(id) != nullptr && !document_.board().hidden.contains(id) &&
           (!allowed_ || allowed_->contains(id));
}

void ShownGrid::refreshSearch() {
    std::vector<std::pair<BundleID, std::string>> candidates;
    std::unordered_set<BundleID> seen;
    for (BundleID& id : document_.board().allApps()) {
        if (library_.app(id) != nullptr && seen.insert(id).second) {
            std::string itsName = library_.name(id);
            candidates.emplace_back(std::move(id), std::move(itsName));
        }
    }
    search_.setCandidates(candidates);
}

std::optional<Folder> ShownGrid::folder(const Uuid& id) const {
    for (const Tile& tile : tiles_) {
        if (const Folder* shown = tile.folder(); shown != nullptr && shown->id == id) {
            return *shown;
        }
    }
    return std::nullopt;
}

void ShownGrid::setShowAllApps(bool on) {
    if (on != showAllApps_) {
        showAllApps_ = on;
        refresh();
    }
}

bool ShownGrid::hasFilter() const {
    const Workspace* workspace = workspaces_.activeWorkspace();
    return focusFilter_ || (workspace != nullptr && workspace->focusGrid);
}

void ShownGrid::setFocusFilter(const std::optional<GridFilter>& filter) {
    if (filter != focusFilter_) {
        focusFilter_ = filter;
        GridFilter::save(filter, defaults_);
        refresh();
    }
}

std::ptrdiff_t ShownGrid::boardIndex(const Board& board, int place) const {
    if (std::cmp_greater_equal(place, tiles_.size())) {
        return std::ssize(board.tiles);
    }
    const Tile& at = tiles_[static_cast<std::size_t>(std::max(place, 0))];
    const auto index = board.indexOfTile(at.id());
    return index ? static_cast<std::ptrdiff_t>(*index) : std::ssize(board.tiles);
}

void ShownGrid::moveWithin(std::vector<BundleID>& apps, const BundleID& app, int place) const {
    const auto from = std::ranges::find(apps, app);
    if (from == apps.end()) {
        return;
    }
    // The target: the shown app that stands at `place`, or the end.
    auto to = apps.begin();
    for (int before = std::max(place, 0); to != apps.end(); ++to) {
        if (isShown(*to) && before-- == 0) {
            break;
        }
    }
    if (from < to) {
        std::rotate(from, from + 1, to);
    } else {
        std::rotate(to, from, from + 1);
    }
}

std::vector<Tile> ShownGrid::shownTiles(const std::vector<Tile>& tiles, const IsShown& isShown) {
    std::vector<Tile> shown;
    shown.reserve(tiles.size());
    for (const Tile& tile : tiles) {
        if (const BundleID* app = tile.app()) {
            if (isShown(*app)) {
                shown.push_back(tile);
            }
            continue;
        }
        Folder folder = *tile.folder();
        std::erase_if(folder.apps, [&](const BundleID& app) { return !isShown(app); });
        if (!folder.apps.empty()) {
            shown.emplace_back(std::move(folder));
        }
    }
    return shown;
}

} // namespace vellory
