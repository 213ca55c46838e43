// SPDX-License-Identifier: Apache-2.0
// What the suggestions, the search for habits and the shake detector cost, against size.
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Input/ShakeDetector.h"
#include "Support/Calendar.h"
#include "Support/WallClock.h"
#include "Usage/HabitDetector.h"
#include "Usage/LaunchLog.h"
#include "Usage/Suggestions.h"

namespace vellory {
namespace {

constexpr double day = 86'400;
constexpr Date now = Date::since2001(8700 * day + 10 * 3600);
constexpr int appCount = 500;

std::string appName(unsigned number) {
    return "com.example.company.app" + std::to_string(number);
}

/// Launches of 500 apps at random moments of the last 120 days, oldest first: two changes of the
/// clocks lie among them.
LaunchLog launches(std::int64_t count) {
    std::mt19937 random(1);
    LaunchLog log;
    log.limit = LaunchLog::greatestLimit;
    for (std::int64_t i = 0; i < count; ++i) {
        const double age = 119.0 * static_cast<double>(count - i) / static_cast<double>(count);
        log.record(appName(random() % appCount), now - age * day);
    }
    return log;
}

void suggestions(benchmark::State& state) {
    const LaunchLog log = launches(state.range(0));
    const Calendar calendar("Europe/Stockholm");
    std::set<BundleID> among;
    for (unsigned i = 0; i < appCount; ++i) {
        among.insert(appName(i));
    }
    const Suggestions::Context context{now, {}, {appName(1), appName(2)}};
    for (auto _ : state) {
        benchmark::DoNotOptimize(Suggestions::rank(log, context, among, 7, calendar));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(suggestions)->Arg(400)->Arg(4000)->Arg(40'000)->Complexity();

// The peer of the wall clock: what asking the calendar about each launch costs.
void timesByCalendar(benchmark::State& state) {
    const LaunchLog log = launches(state.range(0));
    const Calendar calendar("Europe/Stockholm");
    for (auto _ : state) {
        for (const LaunchLog::Event& event : log.events) {
            benchmark::DoNotOptimize(calendar.components(event.at));
        }
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(timesByCalendar)->Arg(400)->Arg(4000)->Arg(40'000)->Complexity();

void timesByWallClock(benchmark::State& state) {
    const LaunchLog log = launches(state.range(0));
    for (auto _ : state) {
        WallClock clock{Calendar("Europe/Stockholm")};
        for (const LaunchLog::Event& event : log.events) {
            benchmark::DoNotOptimize(clock.read(event.at));
        }
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(timesByWallClock)->Arg(400)->Arg(4000)->Arg(40'000)->Complexity();

void open(HabitLog& log, int onDay, int minute, unsigned app) {
    log.events.push_back({appName(app), {onDay, minute / 5 * 5, onDay % 7 + 1}});
}

/// 120 launches a day: a morning and an afternoon routine of six apps each, and other launches of
/// 80 apps, the favourites far more often, between 8 and 18 o'clock.
HabitLog ordinaryDays(std::int64_t days) {
    std::mt19937 random(1);
    std::geometric_distribution<unsigned> favourites(0.05);
    HabitLog log;
    for (int onDay = 0; onDay < days; ++onDay) {
        for (unsigned app = 0; app < 6; ++app) {
            open(log, onDay, 540 + static_cast<int>(random() % 10), 100 + app);
            open(log, onDay, 810 + static_cast<int>(random() % 10), 110 + app);
        }
        for (int i = 12; i < 120; ++i) {
            open(log, onDay, 480 + static_cast<int>(random() % 600), favourites(random) % 80);
        }
    }
    return log;
}

void detect(benchmark::State& state, const HabitLog& log) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(HabitDetector::detect(log, {}, {}, {}, {}));
    }
    state.SetComplexityN(static_cast<std::int64_t>(log.events.size()));
    state.counters["events"] = static_cast<double>(log.events.size());
}

void habits(benchmark::State& state) {
    detect(state, ordinaryDays(state.range(0)));
}
// Six weeks are kept; the others show how the cost grows.
BENCHMARK(habits)->Arg(4)->Arg(42)->Arg(410)->Unit(benchmark::kMillisecond)->Complexity();

/// The least kind log: so many launches a day, all within an hour, of so many apps at random. The
/// windows are full, and most groups come on many days.
void habitsOfACrowd(benchmark::State& state) {
    std::mt19937 random(1);
    HabitLog log;
    for (int onDay = 0; onDay < 42; ++onDay) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            open(log, onDay, 540 + static_cast<int>(i * 60 / state.range(0)),
                 random() % static_cast<unsigned>(state.range(1)));
        }
    }
    detect(state, log);
}
BENCHMARK(habitsOfACrowd)
    ->Args({120, 12})
    ->Args({120, 40})
    ->Args({1200, 40})
    ->Args({1200, 1000})
    ->Unit(benchmark::kMillisecond);

void shakeSample(benchmark::State& state) {
    ShakeDetector detector(ShakeDetector::Sensitivity::normal);
    double time = 0;
    double x = 0;
    double step = 9;
    for (auto _ : state) {
        time += 0.008;
        x += step;
        if (x > 100 || x < -100) {
            step = -step;
        }
        benchmark::DoNotOptimize(detector.feed(x, 0, time));
    }
}
BENCHMARK(shakeSample);

} // namespace
} // namespace vellory

BENCHMARK_MAIN();
