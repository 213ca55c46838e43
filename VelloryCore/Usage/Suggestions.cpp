// SPDX-License-Identifier: Apache-2.0
#include "Usage/Suggestions.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "Support/WallClock.h"

namespace vellory::Suggestions {

namespace {

constexpr double secondsPerDay = 86'400;
/// Days after which a launch is forgotten, and those in which it loses half its weight.
constexpr double greatestAge = 120;
constexpr double halfLife = 14;
/// Twice the variance of the bell over the distance in hours: a deviation of 1.5 hours.
constexpr double bellWidth = 4.5;
/// What a launch counts for at the wrong time of day, so that favourites are never forgotten.
constexpr double anyTimeWeight = 0.15;
constexpr double sameKindOfDay = 0.7;
constexpr double otherKindOfDay = 0.35;
constexpr double sameWorkspace = 2.5;
constexpr double runningFactor = 0.6;

/// The time and day of a moment. One that the calendar cannot place is midnight, and has no day.
struct Moment {
    double hours = 0;
    std::optional<int> weekday;

    bool isWeekend() const {
        const int day = weekday.value_or(2);
        return day == 1 || day == 7;
    }
};

Moment moment(WallClock& clock, Date date) {
    const auto reading = clock.read(date);
    if (!reading) {
        return {};
    }
    const int wholeHours = reading->minute / 60;
    return {wholeHours + (reading->minute % 60) / 60.0, reading->weekday};
}

double timeWeight(double a, double b) {
    const double straight = std::fabs(a - b);
    const double hours = std::min(straight, 24 - straight);
    return std::exp(-hours * hours / bellWidth);
}

double dayFactor(const Moment& a, const Moment& b) {
    if (a.weekday == b.weekday) {
        return 1;
    }
    return a.isWeekend() == b.isWeekend() ? sameKindOfDay : otherKindOfDay;
}

struct Score {
    bool wanted = false;  ///< among the apps asked for
    bool counted = false; ///< at least one launch counted
    double value = 0;
};

} // namespace

std::vector<BundleID> rank(const LaunchLog& log, const Context& context,
                           const std::set<BundleID>& among, std::size_t limit,
                           const Calendar& calendar) {
    WallClock clock(calendar);
    const Moment now = moment(clock, context.now);
    std::unordered_map<std::string_view, Score> scores;
    scores.reserve(std::min(log.events.size(), among.size() * 2));
    for (const LaunchLog::Event& event : log.events) {
        const double age = context.now.since(event.at) / secondsPerDay;
        if (!(age >= 0 && age < greatestAge)) {
            continue;
        }
        const auto [entry, isNew] = scores.try_emplace(event.app);
        Score& score = entry->second;
        if (isNew) {
            score.wanted = among.contains(event.app);
        }
        if (!score.wanted) {
            continue;
        }
        const Moment then = moment(clock, event.at);
        const double recency = std::exp2(-age / halfLife);
        double weight =
            recency * (timeWeight(then.hours, now.hours) + anyTimeWeight) * dayFactor(then, now);
        if (context.workspace && event.workspace == context.workspace) {
            weight *= sameWorkspace;
        }
        score.value += weight;
        score.counted = true;
    }
    for (const BundleID& app : context.running) {
        const auto score = scores.find(app);
        if (score != scores.end()) {
            score->second.value *= runningFactor;
        }
    }

    std::vector<std::pair<double, std::string_view>> ranked;
    ranked.reserve(scores.size());
    for (const auto& [app, score] : scores) {
        if (score.counted) {
            ranked.emplace_back(score.value, app);
        }
    }
    const auto end = ranked.begin() + static_cast<std::ptrdiff_t>(std::min(limit, ranked.size()));
    std::partial_sort(ranked.begin(), end, ranked.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : a.second < b.second;
    });
    std::vector<BundleID> out;
    for (auto app = ranked.begin(); app != end; ++app) {
        out.emplace_back(app->second);
    }
    return out;
}

} // namespace vellory::Suggestions
