// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "Board/InstalledApp.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/SessionEnvironment.h"

namespace vellory {

/// Collects the counts that apps announce by the `Update` signal of the LauncherEntry interface on
/// the session bus, on a thread and GLib context of its own. An app that leaves the bus takes its
/// count along. Nothing is collected without a bus.
class LauncherBadges {
  public:
    explicit LauncherBadges(SessionEnvironment environment);
    LauncherBadges(const LauncherBadges&) = delete;
    LauncherBadges& operator=(const LauncherBadges&) = delete;
    ~LauncherBadges();

    /// The counts that want to be seen now. Any thread.
    std::map<BundleID, std::string> texts() const;

  private:
    struct Badge {
        std::string sender;
        std::int64_t count = 0;
        bool isVisible = false;
    };

    void run();
    void update(const char* sender, GVariant* parameters);
    void forget(const std::string& sender);

    const SessionEnvironment environment_;
    glib::MainContext context_;
    glib::MainLoop loop_;
    mutable std::mutex mutex_;
    std::map<BundleID, Badge> badges_;
    std::thread thread_;
};

} // namespace vellory
