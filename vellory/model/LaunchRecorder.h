// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Board/VelloryPaths.h"
#include "Support/Date.h"
#include "Support/Uuid.h"
#include "Usage/LastUsed.h"
#include "Usage/LaunchLog.h"
#include "Usage/UsageStore.h"
#include "model/DelayedSave.h"

namespace vellory {

/// Learns from every start of an app, from wherever it was started: how often and when, in
/// "usage.json" and "launches.json". A burst of starts is written once. Files that cannot be
/// written are no matter for the user; the next write holds everything.
class LaunchRecorder {
  public:
    LaunchRecorder(VelloryPaths paths, const Clock& clock, Scheduler& scheduler);

    void load();

    /// Whether no launch is known yet, so that the desktop's memory is worth asking.
    bool isEmpty() const { return log_.events.empty(); }
    /// Begins an empty log with what the desktop knows: when each app was last used. Launches that
    /// were recorded since `load` found it empty come after.
    void seed(const std::vector<InstalledApp>& apps, const LastUsed::Source& lastUsed);

    void record(const BundleID& app, Date at, const std::optional<Uuid>& workspace);

    /// Writes what waits to be written: for the end of the program.
    void flush() { save_.flush(); }

    const UsageStore& usage() const { return usage_; }
    const LaunchLog& log() const { return log_; }

  private:
    void save() const;

    VelloryPaths paths_;
    UsageStore usage_;
    LaunchLog log_;
    DelayedSave save_;
};

} // namespace vellory
