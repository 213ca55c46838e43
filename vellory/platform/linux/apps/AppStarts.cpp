// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/AppStarts.h"

#include <algorithm>
#include <csignal>
#include <utility>

#include "platform/linux/apps/DesktopEntryFile.h"
#include "platform/linux/apps/StartupNotification.h"

namespace vellory {

namespace {

/// After which time a start without a window is taken to be over, in seconds.
constexpr double startSeconds = 15;

} // namespace

AppStarts::AppStarts(const SessionEnvironment& environment, X11Connection* connection,
                     Scheduler& scheduler)
    : connection_(connection), scheduler_(scheduler),
      launcher_(std::make_shared<const Launcher>(environment)) {}

void AppStarts::start(Request request, RunningApps::Completion completion) {
    // The time of the user's wish; 0 stands for none, and such windows do not take the focus.
    const bool isWanted = request.focus == Focus::wanted;
    const xcb_timestamp_t time = isConnected() && isWanted ? connection_->serverTime() : 0;
    const BundleID id = request.app.bundleID;
    Start start;
    start.startupId = StartupNotification::freshId(time);
    const glib::KeyFile entry = DesktopEntryFile::load(request.file);
    // Only an app that says so in its entry will end the announcement itself when its window
    // comes; the others would keep the pointer busy until they time out.
    start.isAnnounced = isConnected() && entry != nullptr &&
                        DesktopEntryFile::flag(entry.get(), G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY);
    if (start.isAnnounced) {
        StartupNotification::begin(
            *connection_, {start.startupId, request.app.name, request.file.string(), time});
    }
    const Launcher::Request launch{id, std::move(request.file), std::move(request.action),
                                   start.startupId, std::move(request.links)};
    end(id);
    start.timeout = scheduler_.after(startSeconds, [this, id] { end(id); });
    starts_[id] = std::move(start);
    scheduler_.inBackground([launcher = launcher_, launch, self = weak_from_this(),
                             completion = std::move(completion)]() -> Scheduler::Task {
        const Launcher::Outcome outcome = launcher->launch(launch);
        return [launch, outcome, self, completion] {
            if (const auto starts = self.lock()) {
                starts->launched(launch, outcome);
                if (completion) {
                    completion(outcome.failure);
                }
            }
        };
    });
}

bool AppStarts::isUnderWay(const BundleID& id) const {
    const auto start = starts_.find(id);
    return start != starts_.end() &&
           (start->second.isLaunching ||
            (start->second.pid && kill(static_cast<pid_t>(*start->second.pid), 0) == 0));
}

BundleID AppStarts::appOf(const std::string& startupId) const {
    const auto start = std::ranges::find_if(
        starts_, [&](const auto& pair) { return pair.second.startupId == startupId; });
    return startupId.empty() || start == starts_.end() ? BundleID() : start->first;
}

void AppStarts::launched(const Launcher::Request& request, const Launcher::Outcome& outcome) {
    if (outcome.pid) {
        scheduler_.inBackground(
            [launcher = launcher_, id = request.id, pid = *outcome.pid]() -> Scheduler::Task {
                launcher->moveToScope(id, pid);
                return [] {};
            });
    }
    const auto start = starts_.find(request.id);
    if (start == starts_.end() || start->second.startupId != request.startupId) {
        return;
    }
    if (outcome.failure || !outcome.pid) {
        end(request.id);
        return;
    }
    start->second.isLaunching = false;
    start->second.pid = outcome.pid;
}

void AppStarts::end(const BundleID& id) {
    const auto start = starts_.find(id);
    if (start == starts_.end()) {
        return;
    }
    if (start->second.isAnnounced && isConnected()) {
        StartupNotification::end(*connection_, start->second.startupId);
    }
    spentTimeout_ = std::move(start->second.timeout);
    starts_.erase(start);
}

void AppStarts::report(RunningApps::Completion completion) {
    if (completion) {
        scheduler_.inBackground([self = weak_from_this(), completion = std::move(completion)] {
            return [self, completion] {
                if (!self.expired()) {
                    completion(std::nullopt);
                }
            };
        });
    }
}

} // namespace vellory
