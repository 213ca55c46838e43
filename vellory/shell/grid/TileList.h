// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace vellory {

/// One tile as a view shows it.
struct TileItem {
    QString id; ///< `Tile::id`: what keeps a tile the same tile from one list to the next
    QString title;
    bool isFolder = false;
    QStringList icons; ///< image sources: the app's own, or a folder's first nine
    QString color;     ///< a folder's tint, empty for none
    QString emoji;     ///< a folder's badge, empty for none
    QString cover;     ///< image source of a folder's cover, empty for none
    bool isRunning = false;
    QString badge;
    bool isSelected = false;

    friend bool operator==(const TileItem&, const TileItem&) = default;
};

/// What a `TileGrid` shows, in order. No identity occurs twice.
class TileList : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Lists of tiles come from the launcher")
    Q_PROPERTY(int count READ count NOTIFY itemsChanged)

  public:
    using QObject::QObject;

    const std::vector<TileItem>& items() const { return items_; }
    int count() const { return static_cast<int>(items_.size()); }

    /// Replaces the list; views compare by identity and keep what stays.
    void setItems(std::vector<TileItem> items) {
        if (items != items_) {
            items_ = std::move(items);
            Q_EMIT itemsChanged();
        }
    }

  Q_SIGNALS:
    void itemsChanged();

  private:
    std::vector<TileItem> items_;
};

} // namespace vellory
