// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QThreadPool>

#include "platform/Scheduler.h"

namespace vellory {

/// The machine's clock.
class SystemClock final : public Clock {
  public:
    Date now() const override;
};

/// Timers of Qt's event loop and threads of a pool of its own.
class QtScheduler final : public QObject, public Scheduler {
    Q_OBJECT

  public:
    explicit QtScheduler(QObject* parent = nullptr);
    /// Waits for work that has begun; results that come after this are dropped.
    ~QtScheduler() override;

    Handle after(double seconds, Task task) override;
    Handle every(double seconds, Task task) override;
    void inBackground(std::function<Task()> work) override;

  private:
    QThreadPool pool_;
};

} // namespace vellory
