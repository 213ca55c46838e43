// SPDX-License-Identifier: Apache-2.0
#include "Usage/HabitDetector.h"

#include <algorithm>
#include <limits>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "support/Lists.h"

namespace vellory::HabitDetector {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Apps = std::vector<BundleID>;

/// `apps` opened at a minute of a day; day 0 is a Monday.
void open(HabitLog& log, std::int64_t day, int minute, const Apps& apps) {
    for (const BundleID& app : apps) {
        log.events.push_back({app, {day, minute, static_cast<int>((day + 1) % 7) + 1}});
    }
}

std::vector<Habit> found(const HabitLog& log, const Settings& settings = {},
                         const AppSets& existing = {}) {
    return detect(log, settings, existing, {}, {});
}

TEST(HabitDetector, ThreeAppsOnThreeDaysAtOneTimeAreAHabit) {
    HabitLog log;
    open(log, 0, 540, {"C", "A"});
    open(log, 0, 550, {"B"}); // exactly ten minutes later
    open(log, 1, 545, {"A", "B", "C"});
    open(log, 2, 535, {"B", "C", "A"});
    const Habit habit{{"A", "B", "C"}, 3, {2, 3, 4}, 540};
    ASSERT_THAT(found(log), ElementsAre(habit));
    EXPECT_EQ(habit.id(), "A+B+C");
    EXPECT_EQ(habit.hour(), 9);
    EXPECT_THAT(workspace({{"A"}, 3, {2, 4}, 545}, "", OpenAtTime::yes, Uuid::random).triggers,
                ElementsAre(Workspace::Trigger::schedule({2, 4}, 9, 5)));
}

TEST(HabitDetector, WhatFallsShortIsNoHabit) {
    struct Case {
        const char* why;
        std::vector<int> minutes; ///< of day 0, 1, 2, …
        int lastDelay;            ///< minutes between the other apps and the last one
    };
    const Case cases[] = {
        {"two days only", {540, 540}, 0},
        {"not within ten minutes", {540, 540, 540}, 15},
        {"times 80 minutes apart", {540, 570, 620}, 0},
    };
    for (const Case& c : cases) {
        HabitLog log;
        for (std::size_t day = 0; day < c.minutes.size(); ++day) {
            open(log, static_cast<std::int64_t>(day), c.minutes[day], {"A", "B"});
            open(log, static_cast<std::int64_t>(day), c.minutes[day] + c.lastDelay, {"C"});
        }
        EXPECT_THAT(found(log), IsEmpty()) << c.why;
    }
}

TEST(HabitDetector, HabitIsTheLongestRunOfDaysThatKeepTheTime) {
    // Mornings at 540, 600, 615 (75 apart) and evenings at 1000, 1010; the day at 480 is left out.
    HabitLog log;
    int day = 0;
    for (const int minute : {1000, 615, 540, 480, 1010, 600}) {
        open(log, day++, minute, {"A", "B", "C"});
    }
    // Days 2, 5 and 1: Wednesday, Saturday, Tuesday.
    EXPECT_THAT(found(log), ElementsAre(Habit{{"A", "B", "C"}, 3, {3, 4, 7}, 600}));

    // Of runs of one length the earliest is kept; of four days the third is the middle.
    log = {};
    day = 0;
    for (const int minute : {800, 400, 810, 410, 820, 420, 830, 430}) {
        open(log, day++, minute, {"A", "B", "C"});
    }
    EXPECT_EQ(found(log).front().minute, 420);
    EXPECT_EQ(found(log).front().days, 4);
}

TEST(HabitDetector, MoreDaysThenMoreAppsThenNamesComeFirst) {
    HabitLog log;
    for (int day = 0; day < 4; ++day) {
        open(log, day, 540, {"A", "B", "C"});
        if (day < 3) {
            open(log, day, 540, {"D"});
        }
    }
    EXPECT_THAT(test::each(found(log, {.limit = 10}), &Habit::id),
                ElementsAre("A+B+C", "A+B+C+D", "A+B+D", "A+C+D", "B+C+D"));
    EXPECT_EQ(found(log).size(), 3U);
    EXPECT_THAT(found(log, {.limit = 0}), IsEmpty());
    EXPECT_THAT(found(log, {.limit = -1}), IsEmpty());
}

TEST(HabitDetector, GroupThatSharesHalfOfItsAppsWithAListedSetIsLeftOut) {
    HabitLog log;
    for (int day = 0; day < 3; ++day) {
        open(log, day, 540, {"A", "B", "C", "D"});
    }
    const Settings fours{.minApps = 4};
    struct Case {
        std::set<BundleID> listed;
        bool matched;
    };
    const Case cases[] = {
        {{}, false},
        {{"A"}, false},                         // 1 of 4
        {{"A", "D"}, true},                     // 2 of 4
        {{"A", "B", "C", "D"}, true},           //
        {{"A", "x", "y", "z"}, false},          // the group's size counts, not the set's
        {{"A", "B", "v", "w", "x", "y"}, true}, //
        {{"v", "w", "x", "y"}, false},          //
    };
    for (const Case& c : cases) {
        const AppSets sets{{"other"}, c.listed};
        const std::size_t expected = c.matched ? 0 : 1;
        EXPECT_EQ(detect(log, fours, sets, {}, {}).size(), expected);
        EXPECT_EQ(detect(log, fours, {}, sets, {}).size(), expected);
        EXPECT_EQ(detect(log, fours, {}, {}, sets).size(), expected);
    }
    // Two sets are not added up.
    EXPECT_EQ(found(log, fours, {{"A"}, {"D"}}).size(), 1U);
    // What is left out makes room for what comes after it.
    open(log, 0, 800, {"X", "Y", "Z"});
    open(log, 1, 800, {"X", "Y", "Z"});
    open(log, 2, 800, {"X", "Y", "Z"});
    EXPECT_EQ(found(log, {.limit = 1}, {{"A", "B", "C", "D"}}).front().id(), "X+Y+Z");
}

TEST(HabitDetector, CombinationsComeInTheOrderOfTheList) {
    EXPECT_THAT(combinations({"c", "a", "b"}, 2),
                ElementsAre(Apps{"c", "a"}, Apps{"c", "b"}, Apps{"a", "b"}));
    EXPECT_THAT(combinations({"a", "b"}, 2), ElementsAre(Apps{"a", "b"}));
    EXPECT_THAT(combinations({"a", "b"}, 0), ElementsAre(Apps{}));
    EXPECT_THAT(combinations({"a", "b"}, 3), IsEmpty());
}

/// The rules as they are told, without any thought of speed: what `detect` must give.
std::vector<Habit> detectByTheBook(HabitLog log, const Settings& settings) {
    std::ranges::stable_sort(log.events, [](const auto& a, const auto& b) {
        return std::pair(a.slot.day, a.slot.minute) < std::pair(b.slot.day, b.slot.minute);
    });
    std::map<Apps, std::map<std::int64_t, HabitLog::Slot>> seen;
    for (std::size_t i = 0; i < log.events.size(); ++i) {
        const HabitLog::Slot& start = log.events[i].slot;
        Apps group;
        for (std::size_t j = i; j < log.events.size(); ++j) {
            const auto& [app, slot] = log.events[j];
            if (slot.day != start.day || slot.minute > start.minute + settings.window ||
                group.size() == 8) {
                break;
            }
            if (std::ranges::find(group, app) == group.end()) {
                group.push_back(app);
            }
        }
        for (int size = settings.minApps; size <= settings.maxApps; ++size) {
            for (Apps key : combinations(group, static_cast<std::size_t>(size))) {
                std::ranges::sort(key);
                seen[key].try_emplace(start.day, start);
            }
        }
    }
    std::vector<Habit> habits;
    for (const auto& [key, days] : seen) {
        std::vector<HabitLog::Slot> slots;
        for (const auto& [day, slot] : days) {
            slots.push_back(slot);
        }
        std::ranges::stable_sort(slots, {}, &HabitLog::Slot::minute);
        std::size_t best = 0;
        std::size_t length = 0;
        for (std::size_t begin = 0; begin < slots.size(); ++begin) {
            std::size_t end = begin;
            while (end < slots.size() &&
                   slots[end].minute - slots[begin].minute <= settings.timeSpread) {
                ++end;
            }
            if (end - begin > length) {
                best = begin;
                length = end - begin;
            }
        }
        if (std::cmp_less(length, settings.minDays)) {
            continue;
        }
        Habit habit{key, static_cast<int>(length), {}, slots[best + length / 2].minute};
        for (std::size_t i = best; i < best + length; ++i) {
            habit.weekdays.insert(slots[i].weekday);
        }
        habits.push_back(std::move(habit));
    }
    std::ranges::stable_sort(habits, [](const Habit& a, const Habit& b) {
        return a.days != b.days ? a.days > b.days : a.apps.size() > b.apps.size();
    });
    habits.resize(std::min(habits.size(), static_cast<std::size_t>(settings.limit)));
    return habits;
}

TEST(HabitDetector, AnyLogGivesWhatTheRulesSay) {
    std::mt19937 random(7);
    int habitsSeen = 0;
    for (int round = 0; round < 60; ++round) {
        // 4 to 13 apps; days from crowded (more than eight apps in a window) to sparse.
        const int appCount = 4 + round % 10;
        const int perDay = 5 + round % 4 * 20;
        HabitLog log;
        for (int i = 0; i < 6 * perDay; ++i) {
            const auto app = static_cast<char>('a' + random() % static_cast<unsigned>(appCount));
            open(log, static_cast<int>(random() % 6), static_cast<int>(random() % 60) * 5 + 500,
                 {std::string(1, app)});
        }
        const Settings settings{.minApps = 2 + round % 3, .minDays = 2 + round % 3, .limit = 25};
        const auto expected = detectByTheBook(log, settings);
        ASSERT_EQ(found(log, settings), expected) << "round " << round;
        habitsSeen += static_cast<int>(expected.size());
    }
    EXPECT_GT(habitsSeen, 100);
}

TEST(HabitDetector, OnlyTheLatestEventsAreLookedAt) {
    HabitLog log;
    for (int day = 0; day < 3; ++day) {
        open(log, day, 540, {"A", "B", "C"});
    }
    for (std::size_t i = log.events.size(); i < mostEvents; ++i) {
        open(log, static_cast<int>(i % 3), 300, {i % 2 == 0 ? "even" : "odd"});
    }
    EXPECT_EQ(found(log).size(), 1U) << "crowded days hide no habit";
    open(log, 3, 0, {"x"});
    EXPECT_THAT(found(log), IsEmpty());
}

TEST(HabitDetector, NumbersOutOfRangeAreHarmless) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int greatest = std::numeric_limits<int>::max();
    HabitLog log;
    for (const int minute : {least, -5, 0, greatest}) {
        for (const std::int64_t day : {std::numeric_limits<std::int64_t>::min(), std::int64_t{0},
                                       std::numeric_limits<std::int64_t>::max()}) {
            for (const char* app : {"A", "B", "C"}) {
                log.events.push_back({app, {day, minute, 99}});
            }
        }
    }
    EXPECT_EQ(found(log).size(), 1U);
    for (const int n : {least, -1, 0, greatest}) {
        found(log, {.window = n});
        EXPECT_THAT(found(log, {.maxApps = std::min(n, 0)}), IsEmpty());
        EXPECT_LE(found(log, {.minApps = n}).size(), 3U);
        EXPECT_LE(found(log, {.minDays = n}).size(), 3U);
        EXPECT_LE(found(log, {.timeSpread = n}).size(), 3U);
        EXPECT_EQ(found(log, {.limit = n}).size(), n > 0 ? 1U : 0U);
    }
    EXPECT_THAT(found(HabitLog{}), IsEmpty());
}

} // namespace
} // namespace vellory::HabitDetector
