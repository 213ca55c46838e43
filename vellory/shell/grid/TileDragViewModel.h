// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/LauncherState.h"

namespace vellory {

/// What the views see and do of a drag. The pointer's place comes in cells; see `TileDrag`.
class TileDragViewModel : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(DraggedTile)
    QML_UNCREATABLE("There is one drag, the launcher's")

    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    /// Carried by the pointer, not by keys: a picture of the tile follows it.
    Q_PROPERTY(bool byPointer READ isByPointer NOTIFY activeChanged)
    Q_PROPERTY(QString tileId READ tileId NOTIFY activeChanged)
    Q_PROPERTY(bool isFolder READ isFolder NOTIFY activeChanged)
    Q_PROPERTY(bool inFolder READ isInFolder NOTIFY changed)
    Q_PROPERTY(QString target READ target NOTIFY changed)

  public:
    TileDragViewModel(LauncherState& state, QObject* parent = nullptr);

    bool isActive() const { return drag().isActive(); }
    bool isByPointer() const { return isActive() && byPointer_; }
    QString tileId() const;
    bool isFolder() const { return isActive() && drag().tile().folder() != nullptr; }
    bool isInFolder() const { return isActive() && drag().isInFolder(); }
    /// The tile that would take the dragged one in, empty for none.
    QString target() const { return QString::fromStdString(drag().target().value_or("")); }

    Q_INVOKABLE bool begin(const QString& tileId);
    Q_INVOKABLE void hover(int cell, qreal across) { drag().hover({cell, across}); }
    Q_INVOKABLE void hoverElsewhere() { drag().hoverElsewhere(); }
    Q_INVOKABLE void leaveFolder() { drag().leaveFolder(); }
    Q_INVOKABLE void drop() { state_.dropTile(); }
    Q_INVOKABLE void cancel() { drag().cancel(); }

  Q_SIGNALS:
    void activeChanged();
    void changed();

  private:
    TileDrag& drag() { return state_.drag(); }
    const TileDrag& drag() const { return state_.drag(); }

    LauncherState& state_;
    bool byPointer_ = false;
};

} // namespace vellory
