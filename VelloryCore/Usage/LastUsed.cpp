// SPDX-License-Identifier: Apache-2.0
#include "Usage/LastUsed.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vellory::LastUsed {

namespace {

constexpr double secondsPerDay = 86'400;

/// A date that is no number is none: the sources are files of other programs.
std::optional<Date> finiteDate(const Source& lastUsed, const std::filesystem::path& app) {
    const std::optional<Date> date = lastUsed(app);
    return date && date->isFinite() ? date : std::nullopt;
}

} // namespace

std::vector<InstalledApp> unused(const std::vector<InstalledApp>& apps, double days, Date now,
                                 const Source& lastUsed) {
    const Date cutoff = now - days * secondsPerDay;
    const Date never = Date::since2001(-std::numeric_limits<double>::infinity());
    std::vector<std::pair<Date, const InstalledApp*>> found;
    for (const InstalledApp& app : apps) {
        if (app.url.native().starts_with("/System/")) {
            continue;
        }
        const auto date = finiteDate(lastUsed, app.url);
        if (!date || *date < cutoff) {
            found.emplace_back(date.value_or(never), &app);
        }
    }
    std::ranges::stable_sort(found, [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<InstalledApp> out;
    out.reserve(found.size());
    for (const auto& [date, app] : found) {
        out.push_back(*app);
    }
    return out;
}

LaunchLog seeded(LaunchLog log, const std::vector<InstalledApp>& apps, const Source& lastUsed) {
    if (!log.events.empty()) {
        return log;
    }
    std::vector<std::pair<Date, BundleID>> launches;
    for (const InstalledApp& app : apps) {
        if (const auto date = finiteDate(lastUsed, app.url)) {
            launches.emplace_back(*date, app.bundleID);
        }
    }
    std::ranges::sort(launches, [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second < b.second;
    });
    for (const auto& [date, app] : launches) {
        log.record(app, date);
    }
    return log;
}

} // namespace vellory::LastUsed
