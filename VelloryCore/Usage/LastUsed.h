// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Date.h"
#include "Usage/LaunchLog.h"

/// What the desktop itself remembers about when an app was last opened.
namespace vellory::LastUsed {

/// When the app at a location was last opened, as far as the desktop knows.
using Source = std::function<std::optional<Date>(const std::filesystem::path&)>;

/// The apps that were not opened for `days` days before `now` or never, stalest first: those
/// without a date come before all others. Apps with the same date keep their order in `apps`. The
/// system's own apps (below "/System/") are never listed.
std::vector<InstalledApp> unused(const std::vector<InstalledApp>& apps, double days, Date now,
                                 const Source& lastUsed);

/// The log to begin with: when `log` holds no events, one launch of each app that has a date,
/// oldest first (then by identifier), so that suggestions have material on the first day. A log
/// that holds events comes back as it is, and `lastUsed` is not asked.
LaunchLog seeded(LaunchLog log, const std::vector<InstalledApp>& apps, const Source& lastUsed);

} // namespace vellory::LastUsed
