// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "shell/grid/TileList.h"

namespace vellory {

/// The earlier states of the grid in a list, newest first, and a preview of the chosen one. Each
/// step has `when` and `reason`.
class LayoutHistory : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one history, the launcher's")

    Q_PROPERTY(QVariantList steps READ steps NOTIFY stepsChanged)
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY currentChanged)
    Q_PROPERTY(vellory::TileList* preview READ preview CONSTANT)
    Q_PROPERTY(int kept READ kept CONSTANT)

  public:
    explicit LayoutHistory(AppModel& model, QObject* parent = nullptr);

    const QVariantList& steps() const { return steps_; }
    /// An index into `steps`, -1 when there are none.
    int current() const { return current_; }
    void setCurrent(int index);
    TileList* preview() { return &preview_; }
    /// How many steps there are at most.
    static int kept() { return static_cast<int>(BoardStore::defaultKeep); }

    /// Reads the history anew and chooses the newest step.
    Q_INVOKABLE void load();
    /// Makes the chosen step the grid. False when its file cannot be read.
    Q_INVOKABLE bool restore();

  Q_SIGNALS:
    void stepsChanged();
    void currentChanged();

  private:
    void showPreview();

    AppModel& model_;
    std::vector<BoardStore::Snapshot> snapshots_;
    QVariantList steps_;
    int current_ = -1;
    TileList preview_;
};

} // namespace vellory
