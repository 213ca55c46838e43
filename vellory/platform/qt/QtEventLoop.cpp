// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtEventLoop.h"

#include <memory>

#include <QSocketNotifier>

namespace vellory {

namespace {

class NotifierWatch final : public EventLoop::Watch {
  public:
    NotifierWatch(int fd, std::function<void()> ready)
        : notifier_(std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read)) {
        auto kept = std::make_shared<std::function<void()>>(std::move(ready));
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [kept] { (*kept)(); });
    }
    ~NotifierWatch() override {
        notifier_->setEnabled(false);
        // It may be the one that is calling right now.
        notifier_.release()->deleteLater();
    }

  private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace

EventLoop::Handle QtEventLoop::watchReadable(int fd, std::function<void()> ready) {
    return std::make_unique<NotifierWatch>(fd, std::move(ready));
}

} // namespace vellory
