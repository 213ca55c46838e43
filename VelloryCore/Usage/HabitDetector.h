// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Uuid.h"
#include "Usage/HabitLog.h"
#include "Workspaces/Workspace.h"

/// Finds the groups of apps that the user opens together on several days at about the same time.
namespace vellory::HabitDetector {

struct Settings {
    int window = 10;     ///< minutes within which the apps of a group open
    int minApps = 3;     ///< the sizes of group that are looked for
    int maxApps = 6;     ///< at most 8 apps of one window are looked at
    int minDays = 3;     ///< different days on which a group must open
    int timeSpread = 75; ///< minutes: how far apart the group's times on those days may lie
    int limit = 3;       ///< most habits returned
};

struct Habit {
    std::vector<BundleID> apps; ///< sorted
    int days = 0;               ///< different days on which the group was seen
    std::set<int> weekdays;     ///< those on which it was seen; 1 = Sunday … 7 = Saturday
    int minute = 0;             ///< the usual time, in minutes after midnight

    int hour() const { return minute / 60; }
    /// The apps joined with "+".
    std::string id() const;

    friend bool operator==(const Habit&, const Habit&) = default;
};

/// Sets of apps that a habit is compared with.
using AppSets = std::vector<std::set<BundleID>>;

/// The strongest habits in the log: more days first, then more apps, then by the list of apps.
///
/// A group that shares at least half of its apps with any one of the listed sets (the apps of the
/// saved workspaces, the groups to ignore, the habits that were dismissed) is left out.
///
/// Takes time in proportion to the events, and looks at the latest `mostEvents` only.
std::vector<Habit> detect(const HabitLog& log, const Settings& settings, const AppSets& existing,
                          const AppSets& ignoring, const AppSets& dismissed);

/// Ten times what a busy user's log holds.
inline constexpr std::size_t mostEvents = 50'000;

/// Every subset of `size` apps, each in the order of the list; in the order of their places.
std::vector<std::vector<BundleID>> combinations(const std::vector<BundleID>& apps,
                                                std::size_t size);

enum class OpenAtTime { no, yes };

/// A new workspace with the habit's apps. With `OpenAtTime::yes` it opens by itself at the habit's
/// time on the habit's weekdays.
Workspace workspace(const Habit& habit, std::string name, OpenAtTime openAtTime,
                    const UuidSource& newID);

} // namespace vellory::HabitDetector
