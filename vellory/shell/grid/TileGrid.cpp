// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/TileGrid.h"

#include <algorithm>
#include <cmath>

#include <QQmlProperty>

#include "shell/grid/Delegates.h"

namespace vellory {

namespace {
/// Delegates further away than this from those in view, in pages, are given up.
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

template <class Value>
void TileGrid::setParameter(Value& parameter, Value value) {
    if (value != parameter) {
        parameter = value;
        placeAll();
        Q_EMIT geometryParametersChanged();
        Q_EMIT pageCountChanged();
    }
}

void TileGrid::setColumns(int columns) {
    setParameter(geometry_.columns, std::max(1, columns));
}

void TileGrid::setRows(int rows) {
    setParameter(geometry_.rows, std::max(1, rows));
}

void TileGrid::setSideMargin(qreal margin) {
    setParameter(geometry_.sideMargin, margin);
}

void TileGrid::setMirrored(bool mirrored) {
    setParameter(geometry_.mirrored, mirrored);
}

void TileGrid::setList(bool list) {
    setParameter(geometry_.isList, list);
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

void TileGrid::setRippleOrigin(QPointF origin) {
    if (origin != rippleOrigin_) {
        rippleOrigin_ = origin;
        placeAll();
        Q_EMIT rippleOriginChanged();
    }
}

int TileGrid::pageCount() const {
    return geometry_.pageCount(count());
}

QRectF TileGrid::tileRect(const QString& id) const {
    const auto index = indexes_.find(id);
    return index == indexes_.end() ? QRectF()
                                   : geometry_.cell(index->second).translated(content_->position());
}

QString TileGrid::tileAt(const QPointF& point) const {
    if (clip() && !contains(point)) {
        return {};
    }
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
    const bool isThere = index >= 0 && index < count();
    return isThere ? tiles_->items()[static_cast<std::size_t>(index)].id : QString();
}

QVariantMap TileGrid::placeAt(const QPointF& point) const {
    const auto [cell, across] = geometry_.placeAt(point, position_, count());
    return {{"cell", cell}, {"across", across}};
}

QStringList TileGrid::tilesIn(const QRectF& area) const {
    const QRectF seen = clip() ? area.intersected(boundingRect()) : area;
    const QRectF inContent = seen.translated(-content_->position());
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
        geometry_.size = now.size();
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
    const auto [first, end] = geometry_.shown(position_, count());
    for (int index = first; index < end; ++index) {
        make(index);
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
    content_->setPosition(geometry_.origin(position_));
    const auto shown = geometry_.shown(position_, count());
    for (int index = shown.first; index < shown.end; ++index) {
        if (!entries_.contains(tiles_->items()[static_cast<std::size_t>(index)].id)) {
            polish();
            break;
        }
    }
    for (auto& [id, entry] : entries_) {
        entry.item->setVisible(shown.contains(entry.index));
    }
}

bool TileGrid::make(int index) {
    const TileItem& tile = tiles_->items()[static_cast<std::size_t>(index)];
    if (delegate_ == nullptr || entries_.contains(tile.id)) {
        return false;
    }
    const QSizeF size = geometry_.cell(index).size();
    const QVariantMap initial{{"width", size.width()},
                              {"height", size.height()},
                              {"tileId", tile.id},
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
                              {"highlighted", index == highlight_},
                              {"rippleDelay", geometry_.rippleDelay(index, rippleOrigin_)},
                              {"grid", QVariant::fromValue(this)}};
    QQuickItem* item = makeDelegate(*delegate_, initial, *content_, *this);
    if (item == nullptr) {
        return false;
    }
    Entry& entry = entries_[tile.id];
    entry = {item, tile, index};
    place(entry, false);
    return true;
}

void TileGrid::place(Entry& entry, bool animated) {
    const QRectF where = geometry_.cell(entry.index);
    if (animated) {
        // Through the property system, so that the delegate's own behaviours take part.
        QQmlProperty::write(entry.item, "x", where.x());
        QQmlProperty::write(entry.item, "y", where.y());
    } else {
        entry.item->setPosition(where.topLeft());
    }
    entry.item->setSize(where.size());
    entry.item->setProperty("rippleDelay", geometry_.rippleDelay(entry.index, rippleOrigin_));
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
    for (const int step : {geometry_.screen(), -geometry_.screen()}) {
        const auto [first, end] = geometry_.shown(std::round(position_) + step, count());
        for (int index = first; index < end && made < batch; ++index) {
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
    const int inView = geometry_.shown(std::round(position_), count()).first;
    std::erase_if(entries_, [&](auto& pair) {
        const bool isFar =
            std::abs(pair.second.index - inView) >= (keptPages + 1) * geometry_.perPage();
        if (isFar) {
            pair.second.item->deleteLater();
        }
        return isFar;
    });
}

} // namespace vellory
