// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellory {

/// What the system tells of a process about the app that it was started as.
struct ProcessInfo {
    /// The desktop entry that a launcher started exactly this process from, or "".
    std::string launchedFile;
    /// What may be the app's id in the name of the process's systemd unit, the longest first.
    std::vector<std::string> unitIds;
    /// File names that the program goes by.
    std::vector<std::string> programs;
};

/// Empty for a process that is gone or belongs to somebody else.
ProcessInfo readProcess(std::int64_t pid);

/// The time since the machine was started, in seconds, times of sleep included.
double secondsSinceBoot();
/// When a process began, by that clock and to a hundredth of a second; nothing for one that is
/// gone.
std::optional<double> processStart(std::int64_t pid);

/// The ids that a unit name such as "app-gnome-org.gnome.Maps-4711.scope" may stand for: launchers
/// put their own name before the id or leave it out, and not all escape its hyphens.
std::vector<std::string> appIdsOfUnit(std::string_view unit);

} // namespace vellory
