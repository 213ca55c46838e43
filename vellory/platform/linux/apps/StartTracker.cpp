// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/StartTracker.h"

namespace vellory {

void StartTracker::found(const BundleID& app, const std::string& startupId) {
    App& known = at(app);
    known.hasWindows = true;
    known.startupId = startupId;
}

bool StartTracker::windowsCame(const BundleID& app, const Window& first, double now) {
    App& known = at(app);
    const bool isNewProcess =
        !known.isAlive() &&
        (!first.processStart || *first.processStart + clockTick > known.lastAlive);
    const bool isAnnounced =
        first.isExpected || (!first.startupId.empty() && first.startupId != known.startupId);
    const bool isStart = !known.awaitsWindow && !known.hasWindows &&
                         (isNewProcess || (isAnnounced && now - known.lastStart > startSeconds));
    known.hasWindows = true;
    known.awaitsWindow = false;
    known.startupId = first.startupId;
    if (isStart) {
        known.lastStart = now;
    }
    return isStart;
}

bool StartTracker::unitCame(const BundleID& app, const std::string& unit, double now) {
    App& known = at(app);
    const bool isStart = !known.isAlive() && now - known.lastStart > startSeconds;
    known.units.insert(unit);
    appOfUnit_[unit] = app;
    if (isStart) {
        known.lastStart = now;
        known.awaitsWindow = true;
    }
    return isStart;
}

void StartTracker::windowsWent(const BundleID& app, double now) {
    App& known = at(app);
    known.hasWindows = false;
    known.lastAlive = now;
}

void StartTracker::unitWent(const std::string& unit, double now) {
    const auto app = appOfUnit_.find(unit);
    if (app == appOfUnit_.end()) {
        return;
    }
    App& known = at(app->second);
    known.units.erase(unit);
    known.lastAlive = now;
    known.awaitsWindow = known.awaitsWindow && known.isAlive();
    appOfUnit_.erase(app);
}

} // namespace vellory
