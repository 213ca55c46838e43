// SPDX-License-Identifier: Apache-2.0
#include "shell/search/SearchGrid.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "shell/grid/Delegates.h"

namespace vellory {

namespace {
/// Delegates of one shape that are kept when nothing shows in them.
constexpr std::size_t keptFree = 80;
constexpr int warmMilliseconds = 30;

std::size_t indexOf(auto shape) {
    return static_cast<std::size_t>(shape);
}
} // namespace

SearchGrid::SearchGrid(QQuickItem* parent) : QQuickItem(parent) {
    connect(this, &SearchGrid::measuresChanged, this, &SearchGrid::relayout);
    connect(this, &SearchGrid::viewChanged, this, [this] {
        if (!isPolishing_) {
            polish();
        }
    });
}

SearchGrid::~SearchGrid() = default;

void SearchGrid::setSearch(SearchViewModel* search) {
    if (search == search_) {
        return;
    }
    if (search_ != nullptr) {
        search_->disconnect(this);
    }
    search_ = search;
    if (search_ != nullptr) {
        connect(search_, &SearchViewModel::resultsChanged, this, &SearchGrid::relayout);
        connect(search_, &SearchViewModel::highlightChanged, this, [this] {
            applyHighlight();
            polish();
        });
    }
    relayout();
    Q_EMIT searchChanged();
}

void SearchGrid::setWarm(bool warm) {
    if (warm == warm_) {
        return;
    }
    warm_ = warm;
    if (warm_ && warmTimer_ == 0) {
        warmTimer_ = startTimer(warmMilliseconds);
    }
    Q_EMIT warmChanged();
}

void SearchGrid::componentComplete() {
    QQuickItem::componentComplete();
    relayout();
}

void SearchGrid::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.width() != before.width()) {
        relayout();
    }
}

// --- Where everything is ---

SearchGrid::Shape SearchGrid::shapeOf(Kind kind) {
    switch (kind) {
    case Kind::sum:
        return Shape::sum;
    case Kind::emoji:
        return Shape::emoji;
    case Kind::name:
    case Kind::purpose:
        break;
    }
    return Shape::app;
}

void SearchGrid::relayout() {
    // Several keys may come before the next frame; the view follows once.
    layoutDirty_ = true;
    polish();
}

void SearchGrid::layOut() {
    layoutDirty_ = false;
    bands_.clear();
    qreal y = 0;
    for (const SearchResults::Section& section : search_->results().sections()) {
        Band band{.section = section, .title = search_->title(section.kind), .top = y};
        band.cellsTop = y + (band.title.isEmpty() ? 0 : headingHeight_);
        const Shape shape = shapeOf(section.kind);
        band.columns = shape == Shape::sum ? 1 : std::max(1, columns_);
        band.cellHeight = shape == Shape::sum     ? sumHeight_
                          : shape == Shape::emoji ? emojiHeight_
                                                  : appHeight_;
        const int rows = (section.count + band.columns - 1) / band.columns;
        band.bottom = band.cellsTop + rows * band.cellHeight;
        y = band.bottom;
        bands_.push_back(std::move(band));
    }
    setImplicitHeight(y);
}

QRectF SearchGrid::cellRect(const Band& band, int index) const {
    const int row = index / band.columns;
    const int column = index % band.columns;
    const int shownColumn = mirrored_ ? band.columns - 1 - column : column;
    const qreal cellWidth = (width() - 2 * sideMargin_) / band.columns;
    return {sideMargin_ + shownColumn * cellWidth, band.cellsTop + row * band.cellHeight, cellWidth,
            band.cellHeight};
}

QRectF SearchGrid::rectOfHighlight() const {
    const int highlight = search_ == nullptr ? -1 : search_->highlight();
    for (const Band& band : bands_) {
        const int index = highlight - band.section.first;
        if (highlight >= 0 && index >= 0 && index < band.section.count) {
            QRectF place = cellRect(band, index);
            if (index < band.columns) {
                place.setTop(band.top);
            }
            return place;
        }
    }
    return {};
}

std::vector<SearchGrid::Placement> SearchGrid::visiblePlacements() const {
    std::vector<Placement> out;
    const qreal viewBottom = viewTop_ + viewHeight_;
    for (const Band& band : bands_) {
        if (band.bottom <= viewTop_ || band.top >= viewBottom) {
            continue;
        }
        if (band.cellsTop > band.top && band.cellsTop > viewTop_) {
            out.push_back({.shape = Shape::heading,
                           .place = {sideMargin_, band.top, width() - 2 * sideMargin_,
                                     band.cellsTop - band.top},
                           .content = {.id = band.title, .title = band.title}});
        }
        const auto rowAt = [&](qreal y) {
            return static_cast<int>(std::floor((y - band.cellsTop) / band.cellHeight));
        };
        const int first = std::max(0, rowAt(viewTop_)) * band.columns;
        const int end = std::min(band.section.count, (rowAt(viewBottom) + 1) * band.columns);
        for (int index = first; index < end; ++index) {
            const int cell = band.section.first + index;
            out.push_back({.shape = shapeOf(band.section.kind),
                           .cell = cell,
                           .place = cellRect(band, index),
                           .content = search_->content(cell)});
        }
    }
    return out;
}

// --- Delegates ---

QQmlComponent* SearchGrid::delegateOf(Shape shape) const {
    switch (shape) {
    case Shape::app:
        return appDelegate_;
    case Shape::emoji:
        return emojiDelegate_;
    case Shape::sum:
        return sumDelegate_;
    case Shape::heading:
        return headingDelegate_;
    }
    return nullptr;
}

std::unique_ptr<SearchGrid::Slot> SearchGrid::make(Shape shape) {
    QQmlComponent* const delegate = delegateOf(shape);
    if (delegate == nullptr) {
        return nullptr;
    }
    auto slot = std::make_unique<Slot>();
    slot->cell = std::make_unique<SearchCell>();
    slot->item =
        makeDelegate(*delegate, {{"cell", QVariant::fromValue(slot->cell.get())}}, *this, *this);
    return slot->item == nullptr ? nullptr : std::move(slot);
}

void SearchGrid::updatePolish() {
    if (!isComponentComplete() || search_ == nullptr) {
        return;
    }
    isPolishing_ = true;
    if (layoutDirty_) {
        layOut();
    }
    // First, so that the view scrolls to the highlight before anything is made.
    if (const QRectF now = rectOfHighlight(); now != highlightRect_) {
        highlightRect_ = now;
        Q_EMIT highlightRectChanged();
    }
    isPolishing_ = false;
    show(visiblePlacements());
    applyHighlight();
}

void SearchGrid::show(const std::vector<Placement>& placements) {
    // What stays keeps its delegate; the others of the last time become free.
    auto before = std::exchange(shown_, {});
    std::vector<const Placement*> missing;
    for (const Placement& placement : placements) {
        const std::size_t shape = indexOf(placement.shape);
        auto kept = before[shape].extract(placement.content.id);
        if (kept.empty()) {
            missing.push_back(&placement);
        } else {
            shown_[shape].insert(std::move(kept));
        }
    }
    for (std::size_t shape = 0; shape < shapes; ++shape) {
        for (auto& [id, slot] : before[shape]) {
            free_[shape].push_back(std::move(slot));
        }
    }
    for (const Placement* placement : missing) {
        const std::size_t shape = indexOf(placement->shape);
        std::unique_ptr<Slot> slot;
        if (free_[shape].empty()) {
            slot = make(placement->shape);
        } else {
            slot = std::move(free_[shape].back());
            free_[shape].pop_back();
        }
        if (slot != nullptr) {
            shown_[shape].emplace(placement->content.id, std::move(slot));
        }
    }
    for (const Placement& placement : placements) {
        const auto& shown = shown_[indexOf(placement.shape)];
        if (const auto found = shown.find(placement.content.id); found != shown.end()) {
            Slot& slot = *found->second;
            slot.cell->setContent(placement.content);
            slot.item->setPosition(placement.place.topLeft());
            slot.item->setSize(placement.place.size());
            slot.item->setVisible(true);
        }
    }
    for (auto& free : free_) {
        for (auto& slot : free) {
            slot->item->setVisible(false);
            slot->cell->setHighlighted(false);
        }
        while (free.size() > keptFree) {
            // Its cell must be there until the delegate is gone.
            Slot& last = *free.back();
            last.cell.release()->setParent(last.item);
            last.item->deleteLater();
            free.pop_back();
        }
    }
}

void SearchGrid::applyHighlight() {
    if (search_ == nullptr) {
        return;
    }
    const int highlight = search_->highlight();
    const QString id =
        highlight < 0 ? QString() : QString::fromStdString(search_->results().cellID(highlight));
    for (auto& shown : shown_) {
        for (auto& [key, slot] : shown) {
            slot->cell->setHighlighted(key == id);
        }
    }
}

void SearchGrid::timerEvent(QTimerEvent* event) {
    if (event->timerId() != warmTimer_) {
        QQuickItem::timerEvent(event);
        return;
    }
    constexpr std::size_t batch = 3;
    const std::size_t app = indexOf(Shape::app);
    // The view has no height yet, or less than none, while the window is being laid out.
    const auto rows =
        static_cast<std::size_t>(std::ceil(std::max(0.0, viewHeight_) / std::max(1.0, appHeight_)));
    const std::size_t screenful =
        std::min(keptFree, (rows + 1) * static_cast<std::size_t>(std::max(1, columns_)));
    for (std::size_t made = 0; made < batch; ++made) {
        auto slot = warm_ && shown_[app].size() + free_[app].size() < screenful ? make(Shape::app)
                                                                                : nullptr;
        if (slot == nullptr) {
            killTimer(std::exchange(warmTimer_, 0));
            return;
        }
        slot->item->setVisible(false);
        free_[app].push_back(std::move(slot));
    }
}

} // namespace vellory
