// SPDX-License-Identifier: Apache-2.0
#include "model/RunningTracker.h"

#include <utility>

#include <QPointer>

#include "platform/Desktop.h"
#include "platform/RunningApps.h"
#include "platform/Scheduler.h"

namespace vellory {

RunningTracker::RunningTracker(const Ports& ports, QObject* parent)
    : QObject(parent), ports_(ports) {}

void RunningTracker::refreshRunning() {
    std::set<BundleID> running;
    for (const RunningApp& app : ports_.runningApps.list()) {
        if (app.isRegular) {
            running.insert(app.bundleID);
        }
    }
    if (running != running_) {
        running_ = std::move(running);
        Q_EMIT runningChanged();
        setBadges(badges_);
    }
}

void RunningTracker::refreshBadges() {
    const unsigned request = ++request_;
    ports_.scheduler.inBackground(
        [&desktop = ports_.desktop, self = QPointer(this), request]() -> Scheduler::Task {
            return [self, request, badges = desktop.badges()]() mutable {
                if (self && self->request_ == request) {
                    self->setBadges(std::move(badges));
                }
            };
        });
}

void RunningTracker::clearBadges() {
    ++request_;
    setBadges({});
}

void RunningTracker::setBadges(std::map<BundleID, std::string> badges) {
    std::erase_if(badges, [this](const auto& badge) { return !running_.contains(badge.first); });
    if (badges != badges_) {
        badges_ = std::move(badges);
        Q_EMIT badgesChanged();
    }
}

} // namespace vellory
