// SPDX-License-Identifier: Apache-2.0
#include "shell/TileGrid.h"

#include <algorithm>
#include <cmath>

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlInfo>
#include <QQmlProperty>

#include "Input/GridMotion.h"

namespace vellory {

namespace {
/// Delegates of pages further away than this from the one in view are given up.
constexpr int keptPages = 12;

QRectF bodyOf(const QQuickItem& delegate) {
    return delegate.property("body").toRectF();
}
} // namespace

TileGrid::TileGrid(QQuickItem* parent) : QQuickItem(parent), content_(new QQuickItem(this)) {}

TileGrid::~TileGrid() = default;

void TileGrid::setTiles(TileList* tiles) {
    if (tiles == tiles_) {
        return;
    }
    if (tiles_ != nullptr) {
        tiles_->disconnect(this);
    }
    tiles_ = tiles;
    if (tiles_ != nullptr) {
        connect(tiles_, &TileList::itemsChanged, this, &TileGrid::contentChanged);
    }
    contentChanged();
    Q_EMIT tilesChanged();
}

void TileGrid::setColumns(int columns) {
    columns = std::max(1, columns);
    if (columns != columns_) {
        columns_ = columns;
        placeAll();
        Q_EMIT geometryParametersChanged();
        Q_EMIT pageCountChanged();
    }
}

void TileGrid::setRows(int rows) {
    rows = std::max(1, rows);
    if (rows != rows_) {
        rows_ = rows;
        placeAll();
        Q_EMIT geometryParametersChanged();
        Q_EMIT pageCountChanged();
    }
}

void TileGrid::setSideMargin(qreal margin) {
    if (margin != sideMargin_) {
        sideMargin_ = margin;
        placeAll();
        Q_EMIT geometryParametersChanged();
    }
}

void TileGrid::setPosition(qreal position) {
    if (position != position_) {
        position_ = position;
        scrollContent();
        Q_EMIT positionChanged();
    }
}

void TileGrid::setHighlight(int index) {
    if (index != highlight_) {
        highlight_ = index;
        applyHighlight();
        Q_EMIT highlightChanged();
    }
}

void TileGrid::setMirrored(bool mirrored) {
    if (mirrored != mirrored_) {
        mirrored_ = mirrored;
        placeAll();
        Q_EMIT geometryParametersChanged();
    }
}

void TileGrid::setRippleOrigin(QPointF origin) {
    if (origin != rippleOrigin_) {
        rippleOrigin_ = origin;
        placeAll();
        Q_EMIT rippleOriginChanged();
    }
}

int TileGrid::pageCount() const {
    const int count = tiles_ == nullptr ? 0 : tiles_->count();
    return std::max(1, (count + perPage() - 1) / perPage());
}

QRectF TileGrid::cell(int index) const {
    const int page = index / perPage();
    const int slot = index % perPage();
    const int column = slot % columns_;
    const int row = slot / columns_;
    const qreal cellWidth = (width() - 2 * sideMargin_) / columns_;
    const qreal cellHeight = height() / rows_;
    const qreal direction = mirrored_ ? -1 : 1;
    const int shownColumn = mirrored_ ? columns_ - 1 - column : column;
    return {direction * page * width() + sideMargin_ + shownColumn * cellWidth, row * cellHeight,
            cellWidth, cellHeight};
}

QRectF TileGrid::tileRect(const QString& id) const {
    const auto index = indexes_.find(id);
    return index == indexes_.end() ? QRectF()
                                   : cell(index->second).translated(content_->position());
}

QString TileGrid::tileAt(const QPointF& point) const {
    const QPointF inContent = point - content_->position();
    for (const auto& [id, entry] : entries_) {
        if (entry.item->isVisible() &&
            bodyOf(*entry.item).contains(inContent - entry.item->position())) {
            return id;
        }
    }
    return {};
}

QString TileGrid::tileIdAt(int index) const {
    const bool isThere = tiles_ != nullptr && index >= 0 && index < tiles_->count();
    return isThere ? tiles_->items()[static_cast<std::size_t>(index)].id : QString();
}

QVariantMap TileGrid::placeAt(const QPointF& point) const {
    const int page = std::clamp(static_cast<int>(std::lround(position_)), 0, pageCount() - 1);
    const qreal cellWidth = std::max(1.0, (width() - 2 * sideMargin_) / columns_);
    const qreal cellHeight = std::max(1.0, height() / rows_);
    const qreal x = mirrored_ ? width() - point.x() : point.x();
    const qreal columnsIn = std::clamp((x - sideMargin_) / cellWidth, 0.0, columns_ - 0.001);
    const qreal rowsIn = std::clamp(point.y() / cellHeight, 0.0, rows_ - 0.001);
    const int column = static_cast<int>(columnsIn);
    return {{"cell", page * perPage() + static_cast<int>(rowsIn) * columns_ + column},
            {"across", columnsIn - column}};
}

QStringList TileGrid::tilesIn(const QRectF& area) const {
    const QRectF inContent = area.translated(-content_->position());
    QStringList found;
    for (const auto& [id, entry] : entries_) {
        if (entry.item->isVisible() &&
            bodyOf(*entry.item).translated(entry.item->position()).intersects(inContent)) {
            found.append(id);
        }
    }
    return found;
}

void TileGrid::bringFrom(const QString& id, const QPointF& topLeft) {
    const auto entry = entries_.find(id);
    if (entry == entries_.end() || !animateMoves_) {
        return;
    }
    entry->second.item->setPosition(topLeft - content_->position());
    setMoving(true);
    place(entry->second, true);
    setMoving(false);
}

QQuickItem* TileGrid::itemFor(const QString& id) {
    const auto index = indexes_.find(id);
    if (index == indexes_.end()) {
        return nullptr;
    }
    make(index->second);
    const auto entry = entries_.find(id);
    return entry == entries_.end() ? nullptr : entry->second.item;
}

void TileGrid::componentComplete() {
    QQuickItem::componentComplete();
    contentChanged();
}

void TileGrid::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        placeAll();
    }
}

void TileGrid::contentChanged() {
    if (!isComponentComplete()) {
        return;
    }
    // The list may be set several times before the next frame; the view follows once.
    contentDirty_ = true;
    indexes_.clear();
    if (tiles_ != nullptr) {
        int index = 0;
        for (const TileItem& tile : tiles_->items()) {
            indexes_.emplace(tile.id, index++);
        }
    }
    polish();
    Q_EMIT pageCountChanged();
}

void TileGrid::updatePolish() {
    if (!isComponentComplete() || delegate_ == nullptr || tiles_ == nullptr) {
        return;
    }
    if (contentDirty_) {
        contentDirty_ = false;
        const auto& items = tiles_->items();
        setMoving(animateMoves_ && isVisible());
        for (auto entry = entries_.begin(); entry != entries_.end();) {
            const auto index = indexes_.find(entry->first);
            if (index == indexes_.end()) {
                entry->second.item->setVisible(false);
                entry->second.item->deleteLater();
                entry = entries_.erase(entry);
                continue;
            }
            const bool moved = entry->second.index != index->second;
            entry->second.index = index->second;
            updateEntry(entry->second, items[static_cast<std::size_t>(index->second)]);
            if (moved) {
                place(entry->second, moving_);
            }
            ++entry;
        }
        setMoving(false);
        applyHighlight();
    }
    const auto first = static_cast<int>(std::floor(position_));
    makePage(first);
    if (position_ != first) {
        makePage(first + 1);
    }
    scrollContent();
    requestNeighbours();
}

void TileGrid::setMoving(bool moving) {
    if (moving != moving_) {
        moving_ = moving;
        Q_EMIT movingChanged();
    }
}

void TileGrid::placeAll() {
    if (!isComponentComplete()) {
        return;
    }
    for (auto& [id, entry] : entries_) {
        place(entry, false);
    }
    polish();
}

void TileGrid::scrollContent() {
    content_->setX((mirrored_ ? 1 : -1) * position_ * width());
    const auto first = static_cast<int>(std::floor(position_));
    const auto last = static_cast<int>(std::ceil(position_));
    bool missing = false;
    for (int page = std::max(0, first); page <= last; ++page) {
        const int begin = page * perPage();
        const int end = std::min(begin + perPage(), tiles_ == nullptr ? 0 : tiles_->count());
        for (int index = begin; index < end && !missing; ++index) {
            missing = !entries_.contains(tiles_->items()[static_cast<std::size_t>(index)].id);
        }
    }
    if (missing) {
        polish();
    }
    for (auto& [id, entry] : entries_) {
        const int page = entry.index / perPage();
        entry.item->setVisible(page >= first && page <= last);
    }
}

bool TileGrid::makePage(int page) {
    bool made = false;
    const int begin = std::max(0, page * perPage());
    const int end = std::min((page + 1) * perPage(), tiles_ == nullptr ? 0 : tiles_->count());
    for (int index = begin; index < end; ++index) {
        made = make(index) || made;
    }
    return made;
}

bool TileGrid::make(int index) {
    const TileItem& tile = tiles_->items()[static_cast<std::size_t>(index)];
    if (delegate_ == nullptr || entries_.contains(tile.id)) {
        return false;
    }
    const QVariantMap initial{{"tileId", tile.id},
                              {"title", tile.title},
                              {"isFolder", tile.isFolder},
                              {"icons", tile.icons},
                              {"tint", tile.color},
                              {"emoji", tile.emoji},
                              {"cover", tile.cover},
                              {"badge", tile.badge},
                              {"isRunning", tile.isRunning},
                              {"selected", tile.isSelected},
                              {"index", index},
                              {"highlighted", false},
                              {"rippleDelay", 0.0},
                              {"grid", QVariant::fromValue(this)}};
    QObject* object = delegate_->createWithInitialProperties(initial, delegate_->creationContext());
    auto* item = qobject_cast<QQuickItem*>(object);
    if (item == nullptr) {
        for (const QQmlError& error : delegate_->errors()) {
            qmlWarning(this) << error.toString();
        }
        delete object;
        return false;
    }
    item->setParentItem(content_);
    item->setParent(content_);
    Entry& entry = entries_[tile.id];
    entry = {item, tile, index};
    place(entry, false);
    if (index == highlight_) {
        item->setProperty("highlighted", true);
    }
    return true;
}

void TileGrid::place(Entry& entry, bool animated) {
    const QRectF where = cell(entry.index);
    if (animated) {
        // Through the property system, so that the delegate's own behaviours take part.
        QQmlProperty::write(entry.item, "x", where.x());
        QQmlProperty::write(entry.item, "y", where.y());
    } else {
        entry.item->setPosition(where.topLeft());
    }
    entry.item->setSize(where.size());
    const int slot = entry.index % perPage();
    const int column = slot % columns_;
    const double delay = GridMotion::rippleDelay(
        {mirrored_ ? columns_ - 1 - column : column, slot / columns_, columns_, rows_},
        {rippleOrigin_.x(), rippleOrigin_.y()}, 1.0);
    entry.item->setProperty("rippleDelay", delay);
    entry.item->setProperty("index", entry.index);
}

void TileGrid::updateEntry(Entry& entry, const TileItem& tile) {
    const TileItem& before = entry.shown;
    const auto update = [&](const char* property, const auto& was, const auto& is) {
        if (was != is) {
            entry.item->setProperty(property, QVariant::fromValue(is));
        }
    };
    update("title", before.title, tile.title);
    update("icons", before.icons, tile.icons);
    update("tint", before.color, tile.color);
    update("emoji", before.emoji, tile.emoji);
    update("cover", before.cover, tile.cover);
    update("badge", before.badge, tile.badge);
    update("isRunning", before.isRunning, tile.isRunning);
    update("selected", before.isSelected, tile.isSelected);
    entry.shown = tile;
}

void TileGrid::applyHighlight() {
    for (auto& [id, entry] : entries_) {
        entry.item->setProperty("highlighted", entry.index == highlight_);
    }
}

void TileGrid::requestNeighbours() {
    if (neighbourTimer_ == 0) {
        neighbourTimer_ = startTimer(30);
    }
}

void TileGrid::timerEvent(QTimerEvent* event) {
    if (event->timerId() != neighbourTimer_) {
        QQuickItem::timerEvent(event);
        return;
    }
    // A few delegates at a time: making a page of them at once would cost a frame.
    constexpr int batch = 4;
    int made = 0;
    const int page = static_cast<int>(std::lround(position_));
    const int count = tiles_ == nullptr ? 0 : tiles_->count();
    for (const int neighbour : {page + 1, page - 1}) {
        const int begin = std::max(0, neighbour * perPage());
        const int end = std::min((neighbour + 1) * perPage(), count);
        for (int index = begin; index < end && made < batch; ++index) {
            if (make(index)) {
                entries_[tiles_->items()[static_cast<std::size_t>(index)].id].item->setVisible(
                    false);
                ++made;
            }
        }
    }
    if (made > 0) {
        return;
    }
    killTimer(neighbourTimer_);
    neighbourTimer_ = 0;
    std::erase_if(entries_, [&](auto& pair) {
        const bool isFar = std::abs(pair.second.index / perPage() - page) > keptPages;
        if (isFar) {
            pair.second.item->deleteLater();
        }
        return isFar;
    });
}

} // namespace vellory
