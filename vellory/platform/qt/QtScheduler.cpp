// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtScheduler.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace vellory {

namespace {

class TimerHandle final : public Scheduler::Pending {
  public:
    TimerHandle(double seconds, bool repeats, Scheduler::Task task)
        : task_(std::make_shared<Scheduler::Task>(std::move(task))) {
        constexpr double longest = 20.0 * 24 * 3600; // what a Qt timer can count
        const double bounded = std::clamp(seconds, 0.0, longest);
        // Rounded up: a moment that has not come yet would be waited for once more.
        timer_.setInterval(
            std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(bounded * 1000))));
        timer_.setSingleShot(!repeats);
        // A minute's tick may drift with others to spare wake-ups; what is short is meant
        // precisely.
        timer_.setTimerType(bounded >= 10 ? Qt::VeryCoarseTimer : Qt::CoarseTimer);
        // The task may destroy this handle: the copy keeps it alive while it runs.
        QObject::connect(&timer_, &QTimer::timeout, [kept = task_] { (*kept)(); });
        timer_.start();
    }

  private:
    std::shared_ptr<Scheduler::Task> task_;
    QTimer timer_;
};

} // namespace

Date SystemClock::now() const {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date::since1970(std::chrono::duration<double>(sinceEpoch).count());
}

QtScheduler::QtScheduler(QObject* parent) : QObject(parent) {
    pool_.setMaxThreadCount(2);
}

QtScheduler::~QtScheduler() {
    endBackground();
}

void QtScheduler::endBackground() {
    hasEnded_ = true;
    pool_.clear();
    pool_.waitForDone();
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
}

Scheduler::Handle QtScheduler::after(double seconds, Task task) {
    return std::make_unique<TimerHandle>(seconds, false, std::move(task));
}

Scheduler::Handle QtScheduler::every(double seconds, Task task) {
    return std::make_unique<TimerHandle>(seconds, true, std::move(task));
}

void QtScheduler::inBackground(std::function<Task()> work) {
    if (hasEnded_) {
        return;
    }
    pool_.start([this, work = std::move(work)] {
        Task finish = work();
        if (finish) {
            QMetaObject::invokeMethod(this, std::move(finish), Qt::QueuedConnection);
        }
    });
}

} // namespace vellory
