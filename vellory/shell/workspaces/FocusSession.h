// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "platform/Scheduler.h"

namespace vellory {

/// The focus session that is under way, as the views count it down: each second while the launcher
/// is shown, and not at all while it is not.
class FocusSession : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one session at most, the program's")

    /// Whether the open workspace closes by itself.
    Q_PROPERTY(bool running READ isRunning NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    /// Such as "24:59", and "1:30:00" from an hour on.
    Q_PROPERTY(QString remaining READ remaining NOTIFY changed)
    /// The same for who hears it, such as "24 minutes left".
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed)
    /// What is left of the whole, 1 to 0.
    Q_PROPERTY(double share READ share NOTIFY changed)

  public:
    FocusSession(AppModel& model, const LauncherState& state, Scheduler& scheduler,
                 QObject* parent = nullptr);

    bool isRunning() const { return model_.workspaceCenter().remaining().has_value(); }
    QString name() const;
    QString symbol() const;
    QString remaining() const;
    QString spoken() const;
    double share() const;

    Q_INVOKABLE void endNow() { model_.closeWorkspace(false); }

  Q_SIGNALS:
    void changed();

  private:
    void update();
    int seconds() const;
    const Workspace* workspace() const;

    AppModel& model_;
    const LauncherState& state_;
    Scheduler& scheduler_;
    Scheduler::Handle ticking_;
};

} // namespace vellory
