// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Board/InstalledApp.h"
#include "Board/VelloryPaths.h"
#include "Support/Date.h"
#include "Support/Uuid.h"
#include "Usage/LaunchLog.h"
#include "Usage/UsageStore.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Learns from every start of an app, from wherever it was started: how often and when, in
/// "usage.json" and "launches.json". A burst of starts is written once. Files that cannot be
/// written are no matter for the user; the next write holds everything.
class LaunchRecorder {
  public:
    /// How long after the last start the files are written, in seconds.
    static constexpr double saveDelay = 5.0;

    LaunchRecorder(VelloryPaths paths, Scheduler& scheduler);

    void load();

    /// Fills an empty log from what the platform knows: when each app was last used.
    void seedIfEmpty(const std::vector<InstalledApp>& apps,
                     const std::function<std::optional<Date>(const InstalledApp&)>& lastUsed);

    void record(const BundleID& app, Date at, const std::optional<Uuid>& workspace);

    /// Writes what waits to be written: for the end of the program.
    void flush();

    const UsageStore& usage() const { return usage_; }
    const LaunchLog& log() const { return log_; }

  private:
    void save();

    VelloryPaths paths_;
    Scheduler& scheduler_;
    UsageStore usage_;
    LaunchLog log_;
    bool isDirty_ = false;
    Scheduler::Handle pendingSave_;
};

} // namespace vellory
