// SPDX-License-Identifier: Apache-2.0
#include "model/TileDrag.h"

#include <algorithm>
#include <utility>

#include "model/AppModel.h"
#include "model/LauncherState.h"

namespace vellory {

namespace {
/// How much of a tile's width, at either side, stands for the gap beside it.
constexpr double gapShare = 0.27;
} // namespace

TileDrag::TileDrag(AppModel& model, LauncherState& state, QObject* parent)
    : QObject(parent), model_(model), state_(state) {
    connect(&model_, &AppModel::visibleTilesChanged, this, &TileDrag::onGridChanged);
    connect(&state_, &LauncherState::presentedChanged, this, [this] {
        if (isActive() && !state_.presented()) {
            end();
        }
    });
}

bool TileDrag::begin(const std::string& tileID) {
    const auto& items = state_.currentItems();
    const auto item = std::ranges::find(items, tileID, &Tile::id);
    if (isActive() || state_.searching() || item == items.end()) {
        return false;
    }
    tile_ = *item;
    source_ = state_.openFolder();
    folder_ = source_;
    origin_ = static_cast<int>(item - items.begin());
    place_ = origin_;
    target_.reset();
    overBackground_ = false;
    Q_EMIT activeChanged();
    Q_EMIT changed();
    return true;
}

std::vector<Tile> TileDrag::others() const {
    std::vector<Tile> tiles;
    if (folder_) {
        if (const auto folder = model_.visibleFolder(*folder_)) {
            for (const BundleID& app : folder->apps) {
                tiles.emplace_back(app);
            }
        }
    } else {
        tiles = model_.visibleTiles();
    }
    if (tile_) {
        std::erase_if(tiles, [id = tile_->id()](const Tile& each) { return each.id() == id; });
    }
    return tiles;
}

std::vector<Tile> TileDrag::arranged() const {
    std::vector<Tile> tiles = others();
    if (tile_ && place_) {
        const int at = std::clamp(*place_, 0, static_cast<int>(tiles.size()));
        tiles.insert(tiles.begin() + at, *tile_);
    }
    return tiles;
}

void TileDrag::hover(const Point& point) {
    if (!isActive()) {
        return;
    }
    const std::vector<Tile> shown = arranged();
    if (std::cmp_greater_equal(point.cell, shown.size())) {
        // Its own gap goes to the end, so that one sees where it will land.
        setSpot(static_cast<int>(others().size()), std::nullopt, !folder_);
        return;
    }
    const int cell = std::max(point.cell, 0);
    if (cell == place_) {
        setSpot(place_, std::nullopt, false);
        return;
    }
    const bool isAtSide = point.across < gapShare || point.across > 1 - gapShare;
    const bool takesIn = tile_->app() != nullptr && !folder_;
    if (!isAtSide && takesIn) {
        setSpot(place_, shown[static_cast<std::size_t>(cell)].id(), false);
        return;
    }
    // Counted without the dragged tile: what stands after its gap moves up by one.
    const int before = place_ && cell > *place_ ? cell - 1 : cell;
    setSpot(point.across < 0.5 ? before : before + 1, std::nullopt, false);
}

void TileDrag::hoverElsewhere() {
    if (isActive()) {
        setSpot(folder_ == source_ ? std::optional(origin_) : std::nullopt, std::nullopt, false);
    }
}

void TileDrag::moveTo(int index) {
    if (isActive()) {
        setSpot(std::clamp(index, 0, static_cast<int>(others().size())), std::nullopt, false);
    }
}

void TileDrag::aimAt(int steps) {
    if (!isActive() || folder_ || tile_->app() == nullptr || !place_) {
        return;
    }
    const std::vector<Tile> shown = arranged();
    const int at = *place_ + steps;
    const bool isThere = steps != 0 && at >= 0 && std::cmp_less(at, shown.size());
    setSpot(place_,
            isThere ? std::optional(shown[static_cast<std::size_t>(at)].id()) : std::nullopt,
            false);
}

void TileDrag::leaveFolder() {
    if (!isActive() || !folder_) {
        return;
    }
    folder_.reset();
    place_.reset();
    target_.reset();
    state_.setOpenFolder(std::nullopt);
    Q_EMIT changed();
}

std::optional<Uuid> TileDrag::drop() {
    if (!isActive()) {
        return std::nullopt;
    }
    const auto made = edit();
    end();
    return made;
}

std::optional<Uuid> TileDrag::edit() {
    const BundleID* app = tile_->app();
    if (target_ && app != nullptr) {
        const bool makesFolder = target_->starts_with(Tile::appPrefix);
        const auto folder = model_.drop(*app, *target_);
        return makesFolder ? folder : std::nullopt;
    }
    if (overBackground_) {
        model_.moveToEnd(tile_->id());
        return std::nullopt;
    }
    if (!place_) {
        // Let go over nothing, but out of its folder.
        model_.moveOutOfFolder(*app);
        return std::nullopt;
    }
    const bool staysWhereItWas = folder_ == source_;
    // Edits count places with the tile still at its old one.
    const int place = staysWhereItWas && *place_ > origin_ ? *place_ + 1 : *place_;
    if (folder_) {
        model_.moveInFolder(*folder_, *app, place);
    } else if (source_) {
        model_.moveApp(*app, place);
    } else {
        model_.moveTile(tile_->id(), place);
    }
    return std::nullopt;
}

void TileDrag::cancel() {
    if (!isActive()) {
        return;
    }
    const auto source = source_;
    end();
    if (source && model_.visibleFolder(*source)) {
        state_.setOpenFolder(source);
    }
}

void TileDrag::end() {
    tile_.reset();
    source_.reset();
    folder_.reset();
    place_.reset();
    target_.reset();
    overBackground_ = false;
    Q_EMIT activeChanged();
    Q_EMIT changed();
}

void TileDrag::onGridChanged() {
    if (!isActive()) {
        return;
    }
    const auto& grid = model_.visibleTiles();
    const std::string id = tile_->id();
    const bool isThere = std::ranges::any_of(grid, [&](const Tile& each) {
        const Folder* folder = each.folder();
        return each.id() == id ||
               (folder != nullptr && tile_->app() != nullptr &&
                std::ranges::find(folder->apps, *tile_->app()) != folder->apps.end());
    });
    if (!isThere || (folder_ && !model_.visibleFolder(*folder_))) {
        end();
        return;
    }
    if (target_ && std::ranges::find(grid, *target_, &Tile::id) == grid.end()) {
        target_.reset();
    }
    if (!source_) {
        // What came or went before it moved its old place.
        const auto at = std::ranges::find(grid, id, &Tile::id);
        origin_ = static_cast<int>(at - grid.begin());
    }
    Q_EMIT changed();
}

void TileDrag::setSpot(std::optional<int> place, std::optional<std::string> target,
                       bool overBackground) {
    if (place != place_ || target != target_ || overBackground != overBackground_) {
        place_ = place;
        target_ = std::move(target);
        overBackground_ = overBackground;
        Q_EMIT changed();
    }
}

} // namespace vellory
