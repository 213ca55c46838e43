// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <utility>

#include <QCoreApplication>
#include <QEvent>

#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtScheduler.h"

namespace vellory::test {

/// The main loop of a desktop test, the one that the program has: descriptors, timers and work on
/// other threads.
class MainLoop final : public EventLoop, public Scheduler {
  public:
    /// Waits for events until `done` holds; false when it still does not after ten seconds, which
    /// is how a test fails and never how it passes.
    bool runUntil(const std::function<bool()>& done) {
        bool isLate = false;
        // What is waited for may come on no descriptor: a file, or an answer to be asked for.
        const auto look = scheduler_.every(0.01, [] {});
        const auto deadline = scheduler_.after(10, [&] { isLate = true; });
        while (!done()) {
            if (isLate) {
                return false;
            }
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        return true;
    }

    EventLoop::Handle watchReadable(int fd, std::function<void()> ready) override {
        return events_.watchReadable(fd, std::move(ready));
    }
    Scheduler::Handle after(double seconds, Task task) override {
        return scheduler_.after(seconds, std::move(task));
    }
    Scheduler::Handle every(double seconds, Task task) override {
        return scheduler_.every(seconds, std::move(task));
    }
    void inBackground(std::function<Task()> work) override {
        scheduler_.inBackground(std::move(work));
    }

  private:
    QtEventLoop events_;
    QtScheduler scheduler_;
};

} // namespace vellory::test
