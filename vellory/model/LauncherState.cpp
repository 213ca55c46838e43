// SPDX-License-Identifier: Apache-2.0
#include "model/LauncherState.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "model/AppModel.h"

namespace vellory {

namespace {

std::string folderTileID(const Uuid& folder) {
    return std::string(Tile::folderPrefix) + folder.string();
}

} // namespace

LauncherState::LauncherState(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), search_(model),
      drag_(std::make_unique<TileDrag>(model, *this)) {
    connect(&search_, &SearchState::highlightChanged, this, [this] {
        assign(highlight_, search_.highlightedApp(), &LauncherState::highlightChanged);
    });
    connect(&model_, &AppModel::visibleTilesChanged, this, &LauncherState::onGridChanged);
    connect(&model_.prefs(), &Prefs::changed, this, &LauncherState::applyPrefs);
    keepOpen_ = model_.prefs().keepOpenAfterLaunch();
    applyPrefs();
    onGridChanged();
}

LauncherState::~LauncherState() = default;

// --- What is shown ---

GridNavigation::Grid LauncherState::shownGrid() const {
    const int count = static_cast<int>(currentItems_.size());
    if (searching()) {
        return {count, columns(), rows(), false};
    }
    return openFolder_ ? GridNavigation::Grid{count, folderColumns, folderRows, true, folderPage_}
                       : view_.grid();
}

GridView::Range LauncherState::itemsInView() const {
    if (!openFolder_ || searching()) {
        return view_.inView();
    }
    const GridNavigation::Grid grid = shownGrid();
    return {grid.firstShown(), std::min(grid.firstShown() + grid.pageSize(), grid.count)};
}

void LauncherState::tellSince(const Told& before, bool animated) {
    const Told now = told();
    if (now.columns != before.columns) {
        Q_EMIT columnsChanged();
    }
    if (now.rows != before.rows) {
        Q_EMIT rowsChanged();
    }
    if (now.pageCount != before.pageCount) {
        Q_EMIT pageCountChanged();
    }
    if (now.isList != before.isList) {
        Q_EMIT displayModeChanged();
    }
    if (now.position != before.position) {
        Q_EMIT positionChanged(animated && now.isList == before.isList);
    }
}

void LauncherState::updateItems() {
    std::vector<Tile> items;
    if (searching()) {
        for (BundleID& id : search_.results().apps()) {
            items.emplace_back(std::move(id));
        }
    } else if (openFolder_) {
        if (const auto folder = model_.visibleFolder(*openFolder_)) {
            for (const BundleID& id : folder->apps) {
                items.emplace_back(id);
            }
        }
    } else {
        items = model_.visibleTiles();
    }
    currentItems_ = std::move(items);
    Q_EMIT currentItemsChanged();
}

void LauncherState::onGridChanged() {
    if (openFolder_ && !model_.visibleFolder(*openFolder_)) {
        setOpenFolder(std::nullopt);
    }
    tellIfSelected(selection_.drop([this](const BundleID& id) {
        return model_.app(id) == nullptr || model_.board().hidden.contains(id);
    }));
    search_.refresh();
    updateItems();
    changeView(Motion::jump, [this](GridView& view) {
        view.setCount(static_cast<int>(model_.visibleTiles().size()));
    });
    setFolderPage(folderPage_);
    if (renaming_ && renaming_->starts_with(Tile::appPrefix) &&
        std::ranges::find(currentItems_, *renaming_, &Tile::id) == currentItems_.end()) {
        endRenaming(std::nullopt);
    }
    if (highlight_ && std::cmp_greater_equal(*highlight_, currentItems_.size())) {
        assign(highlight_, std::nullopt, &LauncherState::highlightChanged);
    }
}

void LauncherState::applyPrefs() {
    const Prefs& prefs = model_.prefs();
    const bool isList = prefs.displayMode() == Prefs::DisplayMode::list;
    const GridView::Settings settings =
        compact_
            ? GridView::Settings{prefs.compactColumns(), prefs.compactRows(),
                                 static_cast<double>(prefs.compactIconSize()), prefs.showLabels(),
                                 isList}
            : GridView::Settings{prefs.columns(), prefs.rows(),
                                 static_cast<double>(prefs.iconSize()), prefs.showLabels(), isList};
    changeView(Motion::jump, [&](GridView& view) { view.follow(settings); });
}

void LauncherState::setQuery(const std::string& query) {
    if (!query.empty() && isCovered()) {
        setPanel(Panel::none);
    }
    const Told before = told();
    if (!assign(query_, query, &LauncherState::queryChanged)) {
        return;
    }
    if (searching()) {
        // The search is over everything.
        setOpenFolder(std::nullopt);
    }
    search_.setQuery(query);
    updateItems();
    tellSince(before, false);
    assign(highlight_, search_.highlightedApp(), &LauncherState::highlightChanged);
}

void LauncherState::setOpenFolder(const std::optional<Uuid>& folder) {
    const std::optional<Uuid> before = openFolder_;
    if (folder && !model_.visibleFolder(*folder)) {
        return;
    }
    if (!assign(openFolder_, folder, &LauncherState::openFolderChanged)) {
        return;
    }
    setFolderPage(0);
    endRenaming(std::nullopt);
    updateItems();
    // Who came by the keyboard goes on with it: inside the folder, then on the folder again.
    if (!highlight_ || searching()) {
        return;
    }
    if (folder) {
        setHighlight(0);
    } else {
        const auto tile = std::ranges::find_if(currentItems_, [&](const Tile& each) {
            return each.folder() != nullptr && each.folder()->id == before;
        });
        setHighlight(static_cast<int>(tile - currentItems_.begin()));
    }
}

// --- Pages ---

void LauncherState::goToPage(int page) {
    if (!searching()) {
        changeView(Motion::animated, [page](GridView& view) { view.goToPage(page); });
    }
}

int LauncherState::folderPageCount() const {
    const auto folder = openFolder_ ? model_.visibleFolder(*openFolder_) : std::nullopt;
    const int apps = folder ? static_cast<int>(folder->apps.size()) : 0;
    return GridNavigation::Grid{apps, folderColumns, folderRows}.pageCount();
}

void LauncherState::setFolderPage(int page) {
    assign(folderPage_, std::clamp(page, 0, std::max(folderPageCount() - 1, 0)),
           &LauncherState::folderPageChanged);
}

void LauncherState::step(int pages) {
    if (openFolder_ && !searching()) {
        setFolderPage(folderPage_ + pages);
    } else if (!searching()) {
        changeView(Motion::animated, [pages](GridView& view) { view.step(pages); });
    }
}

void LauncherState::showItem(int index) {
    if (searching()) {
        return;
    }
    if (openFolder_) {
        setFolderPage(shownGrid().pageOf(index));
    } else {
        changeView(Motion::animated, [index](GridView& view) { view.show(index); });
    }
}

void LauncherState::setColumns(int columns) {
    changeView(Motion::jump, [columns](GridView& view) { view.setColumns(columns); });
}

void LauncherState::fitRows(double height) {
    changeView(Motion::jump, [height](GridView& view) { view.fitRows(height); });
}

double LauncherState::letGo(QPointF travelled, QPointF velocity) {
    double speed = 0;
    changeView(Motion::animated, [&](GridView& view) { speed = view.letGo(travelled, velocity); });
    return speed;
}

// --- Highlight and selection ---

void LauncherState::setHighlight(std::optional<int> index) {
    if (searching()) {
        search_.highlightApp(index);
        return;
    }
    if (index && (*index < 0 || std::cmp_greater_equal(*index, currentItems_.size()))) {
        index.reset();
    }
    assign(highlight_, index, &LauncherState::highlightChanged);
    if (index) {
        showItem(*index);
    }
}

const Tile* LauncherState::highlighted() const {
    const bool isThere = highlight_ && std::cmp_less(*highlight_, currentItems_.size());
    return isThere ? &currentItems_[static_cast<std::size_t>(*highlight_)] : nullptr;
}

void LauncherState::setSelected(const std::set<BundleID>& apps) {
    tellIfSelected(selection_.set(apps));
}

void LauncherState::tellIfSelected(bool isChanged) {
    if (isChanged) {
        Q_EMIT selectedChanged();
    }
}

void LauncherState::toggleSelected(const BundleID& id) {
    tellIfSelected(selection_.toggle(id));
}

void LauncherState::selectInBand(const std::vector<BundleID>& covered) {
    tellIfSelected(selection_.sweepOver(covered));
}

std::vector<BundleID> LauncherState::selection() const {
    std::vector<BundleID> apps = model_.board().allApps();
    std::erase_if(apps, [this](const BundleID& id) { return !selected().contains(id); });
    return apps;
}

void LauncherState::selectAll() {
    std::set<BundleID> apps;
    for (const Tile& tile : currentItems_) {
        if (const BundleID* id = tile.app()) {
            apps.insert(*id);
        }
    }
    setSelected(apps);
}

// --- Names, panels, and tiles on their way ---

void LauncherState::beginRenaming(const std::string& tileID) {
    const bool isThere =
        std::ranges::find(currentItems_, tileID, &Tile::id) != currentItems_.end() ||
        (openFolder_ && tileID == folderTileID(*openFolder_));
    if (isThere) {
        assign(renaming_, tileID, &LauncherState::renamingChanged);
    }
}

void LauncherState::endRenaming(const std::optional<std::string>& name) {
    const std::optional<std::string> tileID = renaming_;
    assign(renaming_, std::nullopt, &LauncherState::renamingChanged);
    if (!tileID || !name) {
        return;
    }
    if (tileID->starts_with(Tile::appPrefix)) {
        model_.rename(tileID->substr(Tile::appPrefix.size()), *name);
    } else if (const auto folder =
                   Uuid::parse(std::string_view(*tileID).substr(Tile::folderPrefix.size()))) {
        model_.renameFolder(*folder, *name);
    }
}

void LauncherState::setPanel(Panel panel) {
    assign(panel_, panel, &LauncherState::panelChanged);
}

void LauncherState::togglePanel(Panel panel) {
    setPanel(panel_ == panel ? Panel::none : panel);
}

void LauncherState::chooseEmoji(const Uuid& folder) {
    emojiFolder_ = folder;
    setPanel(Panel::emoji);
}

void LauncherState::pickUp(const std::string& tileID) {
    if (drag_->begin(tileID)) {
        showItem(*drag_->place());
    }
}

void LauncherState::dropTile() {
    if (!drag_->isActive()) {
        return;
    }
    const std::string tileID = drag_->tile().id();
    const bool hadHighlight = highlight_.has_value();
    if (const auto folder = drag_->drop()) {
        openToName(*folder);
        return;
    }
    if (hadHighlight) {
        const auto item = std::ranges::find(currentItems_, tileID, &Tile::id);
        setHighlight(static_cast<int>(item - currentItems_.begin()));
    }
}

void LauncherState::makeFolder(const std::vector<BundleID>& ids) {
    if (const auto folder = model_.makeFolder(ids)) {
        setSelected({});
        openToName(*folder);
    }
}

void LauncherState::openToName(const Uuid& folder) {
    setQuery({});
    setOpenFolder(folder);
    beginRenaming(folderTileID(folder));
}

// --- Plain fields ---

void LauncherState::setKeepOpen(bool on) {
    assign(keepOpen_, on, &LauncherState::keepOpenChanged);
}

void LauncherState::setCompact(bool on) {
    if (assign(compact_, on, &LauncherState::compactChanged)) {
        applyPrefs();
    }
}

void LauncherState::setShowWindows(bool on) {
    assign(showWindows_, on, &LauncherState::showWindowsChanged);
}

void LauncherState::setPresented(bool on) {
    assign(presented_, on, &LauncherState::presentedChanged);
}

void LauncherState::setDragOffset(double offset) {
    assign(dragOffset_, offset, &LauncherState::dragOffsetChanged);
}

void LauncherState::setRippleOrigin(QPointF origin) {
    assign(rippleOrigin_, origin, &LauncherState::rippleOriginChanged);
}

void LauncherState::setRightToLeft(bool on) {
    if (on != rightToLeft()) {
        view_.setRightToLeft(on);
        Q_EMIT rightToLeftChanged();
    }
}

void LauncherState::reset() {
    drag_->cancel();
    endRenaming(std::nullopt);
    setPanel(Panel::none);
    selection_.endExtending();
    setQuery({});
    setOpenFolder(std::nullopt);
    setHighlight(std::nullopt);
    setSelected({});
    setHintsMode(false);
    setShowWindows(false);
    setDragOffset(0);
    setKeepOpen(model_.prefs().keepOpenAfterLaunch());
    changeView(Motion::jump, [](GridView& view) { view.showStart(); });
    pager_ = {};
}

} // namespace vellory
