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

constexpr std::string_view hintAlphabet = "ASDFGHJKLQWERTYUIOPZXCVBNM";
constexpr int hintLetters = static_cast<int>(hintAlphabet.size());

constexpr double labelHeight = 25;
constexpr double gapWithLabels = 26;
constexpr double gapWithoutLabels = 18;

} // namespace

LauncherState::LauncherState(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), search_(model) {
    connect(&search_, &SearchState::highlightChanged, this, [this] {
        assign(highlight_, search_.highlightedApp(), &LauncherState::highlightChanged);
    });
    connect(&model_, &AppModel::visibleTilesChanged, this, &LauncherState::onGridChanged);
    connect(&model_.prefs(), &Prefs::changed, this, &LauncherState::applyPrefs);
    keepOpen_ = model_.prefs().keepOpenAfterLaunch();
    applyPrefs();
    onGridChanged();
}

template <class Field, class Value>
bool LauncherState::assign(Field& field, const Value& value, void (LauncherState::*changed)()) {
    if (field == value) {
        return false;
    }
    field = value;
    Q_EMIT(this->*changed)();
    return true;
}

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
    std::set<BundleID> stillThere = selected_;
    std::erase_if(stillThere, [this](const BundleID& id) {
        return model_.app(id) == nullptr || model_.board().hidden.contains(id);
    });
    setSelected(stillThere);
    search_.refresh();
    updateItems();
    updatePageCount();
    setFolderPage(folderPage_);
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

// --- Highlight, selection, hints ---

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
    assign(selected_, apps, &LauncherState::selectedChanged);
}

void LauncherState::toggleSelected(const BundleID& id) {
    if (selected_.erase(id) == 0) {
        selected_.insert(id);
    }
    Q_EMIT selectedChanged();
}

void LauncherState::setHintsMode(bool on) {
    assign(hintBuffer_, std::string(), &LauncherState::hintBufferChanged);
    assign(hintsMode_, on, &LauncherState::hintsModeChanged);
}

std::string LauncherState::hint(int index) {
    const int wrapped = std::max(index, 0);
    return {hintAlphabet[static_cast<std::size_t>(wrapped / hintLetters % hintLetters)],
            hintAlphabet[static_cast<std::size_t>(wrapped % hintLetters)]};
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
    if (!selected_.empty()) {
        setSelected({});
    } else if (openFolder_) {
        setOpenFolder(std::nullopt);
    } else if (searching()) {
        setQuery({});
    } else if (showWindows_) {
        setShowWindows(false);
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

void LauncherState::hideAfterLaunch() {
    if (!keepOpen_) {
        Q_EMIT hideRequested();
    }
}

void LauncherState::reset() {
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

// --- Keys ---

bool LauncherState::handleKey(const KeyPress& press) {
    const KeyCommand command = KeyCommand::of(press, rightToLeft_);
    if (hintsMode_) {
        handleHintKey(command, press.text);
        return true;
    }
    switch (command.kind) {
    case KeyCommand::Kind::none:
        return false;
    case KeyCommand::Kind::back:
        back();
        return true;
    case KeyCommand::Kind::activate:
    case KeyCommand::Kind::activateNew:
        return activateHighlighted(command.kind == KeyCommand::Kind::activateNew);
    case KeyCommand::Kind::select:
        if (const Tile* tile = highlighted(); tile != nullptr && tile->app() != nullptr) {
            toggleSelected(*tile->app());
        }
        return true;
    case KeyCommand::Kind::hints:
        setHintsMode(true);
        return true;
    case KeyCommand::Kind::move:
        moveHighlight(command.move);
        return true;
    case KeyCommand::Kind::turnPage:
        if (searching()) {
            return false; // moves within the text
        }
        step(command.pages);
        setHighlight(std::nullopt);
        return true;
    case KeyCommand::Kind::erase:
        if (!searching()) {
            return false;
        }
        setQuery(std::string(Text::prefix(query_, Text::length(query_) - 1)));
        return true;
    case KeyCommand::Kind::type:
        type(press.text.toStdString());
        return true;
    }
    return false;
}

void LauncherState::moveHighlight(GridNavigation::Move move) {
    using GridNavigation::Move;
    if (searching()) {
        search_.moveHighlight(move, columns_, rows_);
    } else if (!highlight_ && (move == Move::pageBack || move == Move::pageOn)) {
        step(move == Move::pageOn ? 1 : -1);
    } else {
        setHighlight(GridNavigation::moved(highlight_, move, shownGrid()));
    }
}

bool LauncherState::activateHighlighted(bool newInstance) {
    if (const auto text = search_.highlightedText()) {
        copy(*text);
        return true;
    }
    if (highlighted() == nullptr) {
        return false;
    }
    // A copy: what follows may change the items.
    const Tile tile = *highlighted();
    if (!newInstance || tile.app() == nullptr) {
        activate(tile);
        return true;
    }
    model_.launchNew(*tile.app());
    hideAfterLaunch();
    return true;
}

void LauncherState::type(const std::string& text) {
    // A search does not begin with a blank: that would turn the grid into a list of everything.
    if (searching() || !Text::trimmed(text).empty()) {
        setQuery(query_ + text);
    }
}

void LauncherState::handleHintKey(const KeyCommand& command, const QString& text) {
    if (command.kind == KeyCommand::Kind::erase) {
        assign(hintBuffer_, std::string(), &LauncherState::hintBufferChanged);
        return;
    }
    const std::string letter = Text::uppercased(text.toStdString());
    if (command.kind != KeyCommand::Kind::type || letter.size() != 1 ||
        hintAlphabet.find(letter) == std::string_view::npos) {
        setHintsMode(false);
        return;
    }
    // A letter that leads to no tile on the page is passed over.
    const std::string typed = hintBuffer_ + letter;
    const GridNavigation::Grid grid = shownGrid();
    const int end = std::min(grid.firstShown() + grid.pageSize(), grid.count);
    for (int index = grid.firstShown(); index < end; ++index) {
        const std::string label = hint(index);
        if (label == typed) {
            setHintsMode(false);
            const Tile tile = currentItems_[static_cast<std::size_t>(index)];
            activate(tile);
            return;
        }
        if (label.starts_with(typed)) {
            assign(hintBuffer_, typed, &LauncherState::hintBufferChanged);
            return;
        }
    }
}

// --- Scrolling ---

bool LauncherState::handleScroll(const Scroll& scroll) {
    const bool inFolder = openFolder_ && !searching();
    const int count = inFolder ? folderPageCount() : pageCount_;
    if (count < 2 || (!inFolder && !isPaged())) {
        return false;
    }
    Scroll logical = scroll;
    if (rightToLeft_) {
        logical.dx = -logical.dx;
    }
    const ScrollPager::Result result =
        pager_.feed(logical, model_.clock().now().secondsSince2001,
                    {inFolder ? folderPage_ : page_, count, pageWidth_});
    setDragOffset(rightToLeft_ ? -result.offset : result.offset);
    if (inFolder) {
        setFolderPage(result.page);
    } else {
        goToPage(result.page);
    }
    return true;
}

} // namespace vellory
