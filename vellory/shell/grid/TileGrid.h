// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unordered_map>
#include <vector>

#include <QPointF>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include "model/GridGeometry.h"
#include "shell/grid/TileList.h"

namespace vellory {

/// A grid of tiles, on pages or as one `list`; `position` says what of it is in view, as
/// `GridGeometry` counts.
///
/// Each tile is one delegate item, found again by the tile's identity when the list changes, so
/// that it keeps its state and moves to its new place instead of being made anew. Delegates are
/// made for what is in view at once and for its neighbours when there is time.
///
/// A delegate has the properties `tileId`, `title`, `isFolder`, `icons`, `tint`, `emoji`, `cover`,
/// `isRunning`, `badge`, `selected`, `index`, `highlighted`, `rippleDelay` (0 to 1) and `grid`, all
/// required; and `body`, the part of it that one can grasp.
class TileGrid : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vellory::TileList* tiles READ tiles WRITE setTiles NOTIFY tilesChanged)
    Q_PROPERTY(QQmlComponent* delegate MEMBER delegate_ NOTIFY delegateChanged)
    Q_PROPERTY(int columns READ columns WRITE setColumns NOTIFY geometryParametersChanged)
    Q_PROPERTY(int rows READ rows WRITE setRows NOTIFY geometryParametersChanged)
    Q_PROPERTY(
        qreal sideMargin READ sideMargin WRITE setSideMargin NOTIFY geometryParametersChanged)
    Q_PROPERTY(qreal position READ position WRITE setPosition NOTIFY positionChanged)
    Q_PROPERTY(int highlight READ highlight WRITE setHighlight NOTIFY highlightChanged)
    Q_PROPERTY(bool mirrored READ mirrored WRITE setMirrored NOTIFY geometryParametersChanged)
    Q_PROPERTY(bool list READ isList WRITE setList NOTIFY geometryParametersChanged)
    Q_PROPERTY(
        QPointF rippleOrigin READ rippleOrigin WRITE setRippleOrigin NOTIFY rippleOriginChanged)
    Q_PROPERTY(bool animateMoves MEMBER animateMoves_ NOTIFY animateMovesChanged)
    Q_PROPERTY(bool moving READ isMoving NOTIFY movingChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)

  public:
    explicit TileGrid(QQuickItem* parent = nullptr);
    ~TileGrid() override;

    TileList* tiles() const { return tiles_; }
    void setTiles(TileList* tiles);
    int columns() const { return geometry_.columns; }
    void setColumns(int columns);
    int rows() const { return geometry_.rows; }
    void setRows(int rows);
    qreal sideMargin() const { return geometry_.sideMargin; }
    void setSideMargin(qreal margin);
    qreal position() const { return position_; }
    void setPosition(qreal position);
    int highlight() const { return highlight_; }
    void setHighlight(int index);
    bool mirrored() const { return geometry_.mirrored; }
    void setMirrored(bool mirrored);
    bool isList() const { return geometry_.isList; }
    void setList(bool list);
    /// Where the opening ripple starts, 0 to 1 across the grid.
    QPointF rippleOrigin() const { return rippleOrigin_; }
    void setRippleOrigin(QPointF origin);
    /// Set while delegates take new places: a delegate animates its own moves while it is.
    bool isMoving() const { return moving_; }
    int pageCount() const;

    /// Where the tile is or would be, in this item's coordinates; empty for an unknown tile.
    Q_INVOKABLE QRectF tileRect(const QString& id) const;
    /// The tile whose body is at a point; empty for none.
    Q_INVOKABLE QString tileAt(const QPointF& point) const;
    /// The tile at an index of the list; empty past its ends.
    Q_INVOKABLE QString tileIdAt(int index) const;
    /// The cell nearest to a point: `cell`, counted over all pages, and `across`, how far into it
    /// the point is, 0 to 1 in the direction of reading.
    Q_INVOKABLE QVariantMap placeAt(const QPointF& point) const;
    /// The tiles on the page in view whose bodies a rectangle touches.
    Q_INVOKABLE QStringList tilesIn(const QRectF& area) const;
    /// Lets a tile's delegate come to its cell from where it was let go.
    Q_INVOKABLE void bringFrom(const QString& id, const QPointF& topLeft);
    /// The delegate of a tile, made if need be; null for an unknown tile.
    Q_INVOKABLE QQuickItem* itemFor(const QString& id);

  Q_SIGNALS:
    void tilesChanged();
    void delegateChanged();
    void geometryParametersChanged();
    void positionChanged();
    void highlightChanged();
    void rippleOriginChanged();
    void animateMovesChanged();
    void movingChanged();
    void pageCountChanged();

  protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void updatePolish() override;
    void timerEvent(QTimerEvent* event) override;

  private:
    struct Entry {
        QQuickItem* item = nullptr;
        TileItem shown;
        int index = 0;
    };

    int count() const { return tiles_ == nullptr ? 0 : tiles_->count(); }
    /// Sets what the geometry depends on; everything takes its new place at once.
    template <class Value>
    void setParameter(Value& parameter, Value value);
    void contentChanged();
    void setMoving(bool moving);
    void placeAll();
    void scrollContent();
    /// Makes the delegate of a tile; true if it was missing.
    bool make(int index);
    void place(Entry& entry, bool animated);
    void updateEntry(Entry& entry, const TileItem& tile);
    void applyHighlight();
    void requestNeighbours();

    QPointer<TileList> tiles_;
    QQmlComponent* delegate_ = nullptr;
    QQuickItem* content_ = nullptr;
    std::unordered_map<QString, Entry> entries_;
    std::unordered_map<QString, int> indexes_;
    GridGeometry geometry_{.columns = 7, .rows = 5, .sideMargin = 48};
    qreal position_ = 0;
    int highlight_ = -1;
    QPointF rippleOrigin_{0.5, 0.5};
    bool animateMoves_ = true;
    bool moving_ = false;
    bool contentDirty_ = false;
    int neighbourTimer_ = 0;
};

} // namespace vellory
