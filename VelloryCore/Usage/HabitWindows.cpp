// SPDX-License-Identifier: Apache-2.0
#include "Usage/HabitWindows.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

namespace vellory::HabitDetector {

namespace {

/// Which apps were opened on at least `minDays` days; only they can be in a habit.
std::vector<bool> regularApps(const History& history, int minDays) {
    std::vector<int> days(history.names.size());
    std::vector<std::int64_t> lastDay(history.names.size());
    for (const Launch& launch : history.launches) {
        if (days[launch.app] == 0 || lastDay[launch.app] != launch.day) {
            ++days[launch.app];
            lastDay[launch.app] = launch.day;
        }
    }
    std::vector<bool> out(days.size());
    std::transform(days.begin(), days.end(), out.begin(),
                   [&](int count) { return count >= minDays; });
    return out;
}

/// The window of every launch of a day, in the order of time.
///
/// Walks backwards and keeps the eight different apps that come next, the soonest first: the apps
/// of a window are the launch's own and those of them that come soon enough.
std::vector<Window> windowsOfDay(std::span<const Launch> launches, std::uint32_t day,
                                 const Settings& settings, const std::vector<bool>& regular) {
    std::vector<Window> out(launches.size());
    std::array<const Launch*, mostAppsInWindow> next{};
    std::size_t known = 0;
    for (std::size_t i = launches.size(); i-- > 0;) {
        const Launch& start = launches[i];
        const auto end = next.begin() + static_cast<std::ptrdiff_t>(known);
        auto place = std::find_if(next.begin(), end,
                                  [&](const Launch* later) { return later->app == start.app; });
        if (place == end) {
            known = std::min(known + 1, mostAppsInWindow);
            place = next.begin() + static_cast<std::ptrdiff_t>(known) - 1;
        }
        std::shift_right(next.begin(), place + 1, 1);
        next.front() = &start;

        Window& window = out[i];
        window.day = day;
        window.minute = start.minute;
        window.weekday = start.weekday;
        for (const Launch* launch : std::span(next).first(known)) {
            if (std::int64_t{launch->minute} - start.minute > settings.window) {
                break;
            }
            if (regular[launch->app]) {
                window.apps[window.count++] = launch->app;
            }
        }
        std::sort(window.apps.begin(), window.apps.begin() + window.count);
    }
    return out;
}

} // namespace

History::History(const HabitLog& log) {
    const std::size_t skipped = log.events.size() - std::min(log.events.size(), mostEvents);
    const std::span events = std::span(log.events).subspan(skipped);
    std::unordered_map<std::string_view, AppIndex> places;
    for (const HabitLog::Event& event : events) {
        const auto place = static_cast<AppIndex>(places.size());
        const AppIndex app = places.try_emplace(event.app, place).first->second;
        launches.push_back({event.slot.day, event.slot.minute, event.slot.weekday, app});
    }
    names.resize(places.size());
    std::ranges::transform(places, names.begin(), [](const auto& known) { return known.first; });
    std::ranges::sort(names);
    std::vector<AppIndex> sorted(names.size());
    for (AppIndex i = 0; i < names.size(); ++i) {
        sorted[places.at(names[i])] = i;
    }
    for (Launch& launch : launches) {
        launch.app = sorted[launch.app];
    }
    std::ranges::stable_sort(launches, [](const Launch& a, const Launch& b) {
        return std::tie(a.day, a.minute) < std::tie(b.day, b.minute);
    });
}

std::vector<Window> windows(const History& history, const Settings& settings) {
    const std::vector<bool> regular = regularApps(history, settings.minDays);
    std::vector<Window> out;
    std::uint32_t day = 0;
    history.eachDay([&](std::span<const Launch> launches) {
        const std::vector<Window> all = windowsOfDay(launches, day++, settings, regular);
        const Window* previous = nullptr;
        for (const Window& window : all) {
            // What the window before holds too has occurred by then.
            const bool isNew =
                previous == nullptr || !std::ranges::includes(previous->all(), window.all());
            if (isNew && window.count >= settings.minApps) {
                out.push_back(window);
            }
            previous = &window;
        }
    });
    return out;
}

} // namespace vellory::HabitDetector
