// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DesktopSession.h"
#include "MainLoop.h"
#include "WindowView.h"
#include "platform/linux/apps/LinuxAppCatalogue.h"
#include "platform/linux/apps/LinuxRunningApps.h"

namespace vellory::test {

/// The launcher as it stands on a desktop of its own.
class LauncherOnDesktop : public testing::Test {
  protected:
    /// Reads the entries that the test has written and starts looking at the desktop.
    void begin() {
        entries = std::make_shared<DesktopEntries>(
            DesktopEntries::Options{session.environment(), std::nullopt});
        LinuxAppCatalogue catalogue(entries, "");
        installed = catalogue.scan(catalogue.roots({}));
        apps = std::make_unique<LinuxRunningApps>(LinuxRunningApps::Options{session.environment()},
                                                  entries, loop, loop);
        apps->observe({[this](const BundleID& id) { told.push_back("launched " + id); },
                       [this](const BundleID& id) { told.push_back("quit " + id); },
                       [this] { told.push_back("changed"); }});
    }

    InstalledApp app(const BundleID& id) const {
        const auto found = std::ranges::find(installed, id, &InstalledApp::bundleID);
        return found == installed.end() ? InstalledApp{id, id, "/nowhere"} : *found;
    }

    /// Opens and waits for the answer: "" when the app started, else why not.
    std::string open(const BundleID& id, RunningApps::Open mode = RunningApps::Open::bringForward) {
        return answerOf([&](RunningApps::Completion done) { apps->open(app(id), mode, done); });
    }

    std::string answerOf(const std::function<void(RunningApps::Completion)>& ask) {
        std::optional<std::string> answer;
        ask([&](const std::optional<std::string>& failure) { answer = failure.value_or(""); });
        EXPECT_TRUE(loop.runUntil([&] { return answer.has_value(); }));
        return answer.value_or("no answer");
    }

    std::optional<RunningApp> running(const BundleID& id) const {
        const auto all = apps->list();
        const auto found = std::ranges::find(all, id, &RunningApp::bundleID);
        return found == all.end() ? std::nullopt : std::optional(*found);
    }

    bool becomesRunning(const BundleID& id) {
        return loop.runUntil([&] { return running(id).has_value(); });
    }
    /// Waits until the window manager lists so many windows.
    bool windowsBecome(std::size_t count) {
        return loop.runUntil([&] { return view.listed().size() == count; });
    }

    DesktopSession session;
    MainLoop loop;
    WindowView view{session, loop};
    std::shared_ptr<DesktopEntries> entries;
    std::vector<InstalledApp> installed;
    std::unique_ptr<LinuxRunningApps> apps;
    std::vector<std::string> told;
};

} // namespace vellory::test
