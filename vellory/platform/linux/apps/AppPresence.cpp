// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/AppPresence.h"

#include <algorithm>

namespace vellory {

namespace {

std::set<BundleID> appsOf(const std::vector<AppWindow>& windows) {
    std::set<BundleID> apps;
    for (const AppWindow& window : windows) {
        apps.insert(window.app);
    }
    return apps;
}

std::set<xcb_window_t> identifiersOf(const std::vector<AppWindow>& windows) {
    std::set<xcb_window_t> identifiers;
    for (const AppWindow& window : windows) {
        identifiers.insert(window.window);
    }
    return identifiers;
}

} // namespace

void AppPresence::begin(const std::vector<AppWindow>& windows) {
    apps_ = appsOf(windows);
    windows_ = identifiersOf(windows);
    for (const AppWindow& window : windows) {
        tracker_.found(window.app, window.startupId);
    }
}

AppPresence::News AppPresence::compare(const std::vector<AppWindow>& windows, Missing missing,
                                       double now) {
    News news;
    const std::set<BundleID> present = appsOf(windows);
    std::vector<BundleID> came;
    std::ranges::set_difference(present, apps_, std::back_inserter(came));
    if (missing == Missing::quit) {
        std::ranges::set_difference(apps_, present, std::back_inserter(news.quit));
    }
    std::ranges::copy_if(came, std::back_inserter(news.launched),
                         [&](const BundleID& app) { return wasStarted(app, windows, now); });
    news.isChangedBeside = news.launched.size() < came.size();
    apps_.insert(came.begin(), came.end());
    for (const BundleID& app : news.quit) {
        apps_.erase(app);
        tracker_.windowsWent(app, now);
    }
    for (const AppWindow& window : windows) {
        if (!windows_.contains(window.window)) {
            news.withNewWindows.insert(window.app);
        }
    }
    windows_ = identifiersOf(windows);
    return news;
}

bool AppPresence::wasStarted(const BundleID& app, const std::vector<AppWindow>& windows,
                             double now) {
    const auto first = std::ranges::find(windows, app, &AppWindow::app);
    return tracker_.windowsCame(app,
                                {.processStart = probe_.processStart(first->pid),
                                 .startupId = first->startupId,
                                 .isExpected = probe_.isExpected(app)},
                                now);
}

} // namespace vellory
