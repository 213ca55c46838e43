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
    /// As `endBackground`.
    ~QtScheduler() override;

    /// Waits for background work that has begun. What waits for its turn is dropped, and so are all
    /// results that have not been handed over and all work that comes later: from here on what work
    /// refers to may go.
    void endBackground();

    Handle after(double seconds, Task task) override;
    Handle every(double seconds, Task task) override;
    void inBackground(std::function<Task()> work) override;

  private:
    QThreadPool pool_;
    bool hasEnded_ = false;
};

} // namespace vellory
