// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/LauncherState.h"

namespace vellory {

/// What narrows the grid, a Focus filter or the active workspace, as the views see it; and the
/// switch that shows everything until the launcher is hidden.
class GridRestriction : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("It comes from the launcher")
    /// Empty when nothing narrows the grid.
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(bool lifted READ isLifted WRITE setLifted NOTIFY changed)

  public:
    GridRestriction(AppModel& model, const LauncherState& state, QObject* parent = nullptr);

    QString name() const;
    bool isLifted() const { return model_.showAllApps(); }
    void setLifted(bool lifted) { model_.setShowAllApps(lifted); }

  Q_SIGNALS:
    void changed();

  private:
    AppModel& model_;
};

} // namespace vellory
