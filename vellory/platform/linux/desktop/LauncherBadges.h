// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "Apps/InstalledApp.h"
#include "platform/linux/session/BusListener.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// Collects the counts that apps announce by the `Update` signal of the LauncherEntry interface on
/// the session bus. An app that leaves the bus takes its count along. Nothing is collected without
/// a bus.
class LauncherBadges {
  public:
    explicit LauncherBadges(const SessionEnvironment& environment);
    LauncherBadges(const LauncherBadges&) = delete;
    LauncherBadges& operator=(const LauncherBadges&) = delete;

    /// The counts that want to be seen now. Any thread.
    std::map<BundleID, std::string> texts() const;

  private:
    struct Badge {
        std::string sender;
        std::int64_t count = 0;
        bool isVisible = false;
    };

    void update(const char* sender, GVariant* parameters);
    void ownerChanged(GVariant* parameters);
    void forget(const std::string& sender);

    mutable std::mutex mutex_;
    std::map<BundleID, Badge> badges_;
    BusListener listener_; ///< last: it ends before what it writes to
};

} // namespace vellory
