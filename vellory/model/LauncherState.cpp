// SPDX-License-Identifier: Apache-2.0
#include "model/LauncherState.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "Support/Text.h"
#include "model/AppModel.h"

namespace vellory {

namespace {

constexpr double labelHeight = 25;
constexpr double gapWithLabels = 26;
constexpr double gapWithoutLabels = 18;

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

bool LauncherState::isPaged() const {
    return !searching() && model_.prefs().displayMode() == Prefs::DisplayMode::pages;
}

GridNavigation::Grid LauncherState::shownGrid() const {
    const int count = static_cast<int>(currentItems_.size());
    if (!searching() && openFolder_) {
        return {count, folderColumns, folderRows, true, folderPage_};
    }
    return {count, columns_, rows_, isPaged(), page_};
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

void LauncherState::updatePageCount() {
    const GridNavigation::Grid grid{static_cast<int>(model_.visibleTiles().size()), columns_,
                                    rows_};
    assign(pageCount_, isPaged() ? grid.pageCount() : 1, &LauncherState::pageCountChanged);
    setPage(page_, false);
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
    updatePageCount();
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
    setColumns(compact_ ? prefs.compactColumns() : prefs.columns());
    if (height_) {
        fitRows(*height_);
    } else {
        assign(rows_, compact_ ? prefs.compactRows() : prefs.rows(), &LauncherState::rowsChanged);
    }
    updatePageCount();
}

void LauncherState::setQuery(const std::string& query) {
    if (!query.empty() && isCovered()) {
        setPanel(Panel::none);
    }
    const bool wasSearching = searching();
    if (!assign(query_, query, &LauncherState::queryChanged)) {
        return;
    }
    if (searching() && !wasSearching) {
        pageBeforeSearch_ = page_;
        // The search is over everything.
        setOpenFolder(std::nullopt);
    }
    search_.setQuery(query);
    updateItems();
    updatePageCount();
    if (!searching()) {
        setPage(pageBeforeSearch_, false);
    }
    assign(highlight_, search_.highlightedApp(), &LauncherState::highlightChanged);
}

void LauncherState::setOpenFolder(const std::optional<Uuid>& folder) {
    const std::optional<Uuid> before = openFolder_;
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

void LauncherState::setPage(int page, bool animated) {
    const int nearest = std::clamp(page, 0, std::max(pageCount_ - 1, 0));
    if (nearest != page_) {
        page_ = nearest;
        Q_EMIT pageChanged(animated);
    }
}

void LauncherState::goToPage(int page) {
    setPage(page, true);
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
    } else {
        goToPage(page_ + pages);
    }
}

void LauncherState::showItem(int index) {
    const GridNavigation::Grid grid = shownGrid();
    if (openFolder_ && !searching()) {
        setFolderPage(grid.pageOf(index));
    } else if (grid.isPaged) {
        goToPage(grid.pageOf(index));
    }
}

void LauncherState::setColumns(int columns) {
    if (assign(columns_, std::max(columns, 1), &LauncherState::columnsChanged)) {
        updatePageCount();
    }
}

void LauncherState::fitRows(double height) {
    height_ = height;
    const Prefs& prefs = model_.prefs();
    const int most = compact_ ? prefs.compactRows() : prefs.rows();
    const double icon = compact_ ? prefs.compactIconSize() : prefs.iconSize();
    const double gap = prefs.showLabels() ? gapWithLabels : gapWithoutLabels;
    const double label = prefs.showLabels() ? labelHeight : 0;
    const double fitting = std::floor((height + gap) / (gap + label + icon));
    // Written so that a height that is no number gives one row.
    const int rows = fitting >= 2 ? static_cast<int>(std::min<double>(fitting, most)) : 1;
    if (assign(rows_, rows, &LauncherState::rowsChanged)) {
        updatePageCount();
    }
}

void LauncherState::setPageWidth(double width) {
    pageWidth_ = width;
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
    assign(rightToLeft_, on, &LauncherState::rightToLeftChanged);
}

// --- What users do ---

void LauncherState::back() {
    if (!selected().empty()) {
        setSelected({});
    } else if (openFolder_) {
        setOpenFolder(std::nullopt);
    } else if (searching()) {
        setQuery({});
    } else if (showWindows_) {
        setShowWindows(false);
    } else if (panel_ != Panel::none) {
        setPanel(Panel::none);
    } else {
        Q_EMIT hideRequested();
    }
}

void LauncherState::activate(const Tile& tile) {
    if (const Folder* folder = tile.folder()) {
        setOpenFolder(folder->id);
        return;
    }
    model_.launch(*tile.app());
    hideAfterLaunch();
}

void LauncherState::copy(const std::string& text) {
    Q_EMIT copyRequested(text);
    hideAfterLaunch();
}

void LauncherState::activateNew(const BundleID& id) {
    model_.launchNew(id);
    hideAfterLaunch();
}

void LauncherState::perform(const BundleID& id, const std::string& action) {
    model_.perform(id, action);
    hideAfterLaunch();
}

void LauncherState::openFile(const BundleID& id, const std::filesystem::path& file) {
    if (model_.openFile(id, file)) {
        hideAfterLaunch();
    }
}

void LauncherState::hideAfterLaunch() {
    if (!keepOpen_) {
        Q_EMIT hideRequested();
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
    setPage(0, false);
    pager_ = {};
}

} // namespace vellory
