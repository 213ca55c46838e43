// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Usage/HabitDetector.h"
#include "Usage/HabitLog.h"

/// The launches of a log as the search for habits walks them: `HabitDetector` only.
namespace vellory::HabitDetector {

/// Apps of one window that are looked at: with more, the combinations would get out of hand.
inline constexpr std::size_t mostAppsInWindow = 8;

/// An app as its place in the sorted list of all apps of the log, so that comparing places is
/// comparing identifiers.
using AppIndex = std::uint32_t;

struct Launch {
    std::int64_t day;
    int minute;
    int weekday;
    AppIndex app;
};

/// The apps that opened within the window that begins with one launch.
struct Window {
    std::uint32_t day = 0; ///< counted from the first day of the log
    int minute = 0;
    int weekday = 0;
    std::array<AppIndex, mostAppsInWindow> apps{}; ///< ascending
    std::uint8_t count = 0;

    std::span<const AppIndex> all() const { return {apps.data(), count}; }
};

/// The latest launches in the order of time, and the identifiers that their indexes stand for.
struct History {
    std::vector<Launch> launches;
    std::vector<std::string_view> names;

    explicit History(const HabitLog& log);

    /// The launches day by day.
    template <class Visit>
    void eachDay(Visit visit) const {
        for (std::size_t begin = 0; begin < launches.size();) {
            std::size_t end = begin;
            while (end < launches.size() && launches[end].day == launches[begin].day) {
                ++end;
            }
            visit(std::span(launches).subspan(begin, end - begin));
            begin = end;
        }
    }
};

/// The windows in which a group can occur for the first time on its day, in the order of time; only
/// with apps that were opened on at least `Settings::minDays` days, and with enough of them for a
/// group.
std::vector<Window> windows(const History& history, const Settings& settings);

} // namespace vellory::HabitDetector
