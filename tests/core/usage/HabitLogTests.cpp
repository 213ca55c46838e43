// SPDX-License-Identifier: Apache-2.0
#include "Usage/HabitLog.h"

#include <gmock/gmock.h>

#include "support/Lists.h"
#include "support/Records.h"
#include "support/TemporaryFolder.h"

namespace vellory::usage_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double minute = 60;
constexpr double day = 86'400;

HabitLog::Event event(std::string app, std::int64_t onDay, int atMinute, int weekday) {
    return {std::move(app), {onDay, atMinute, weekday}};
}

TEST(HabitLog, SlotIsTheDayTheFiveMinutesAndTheWeekday) {
    const Calendar utc("UTC");
    using Slot = HabitLog::Slot;
    // 2001-01-01 was a Monday; 2024-01-01, day 8400, too.
    EXPECT_EQ(HabitLog::bucket(Date::since2001(0), utc), (Slot{0, 0, 2}));
    EXPECT_EQ(HabitLog::bucket(Date::since2001(8400 * day + 544 * minute), utc),
              (Slot{8400, 540, 2}));
    EXPECT_EQ(HabitLog::bucket(Date::since2001(8400 * day - 1), utc), (Slot{8399, 1435, 1}));
    EXPECT_EQ(HabitLog::bucket(Date::since2001(-1), utc), (Slot{-1, 1435, 1}));
    EXPECT_EQ(HabitLog::bucket(Date::since2001(1e300), utc), std::nullopt);
}

TEST(HabitLog, EveryDayHasANumberOfItsOwnAlsoWhereTheClocksChange) {
    // 400 days of 12:00 UTC, both changes of the clocks among them.
    for (const char* zone : {"UTC", "Europe/Stockholm", "America/New_York", "Pacific/Auckland"}) {
        const Calendar calendar(zone);
        const auto first = HabitLog::bucket(Date::since2001(8400.5 * day), calendar);
        for (int i = 0; i < 400; ++i) {
            const auto slot = HabitLog::bucket(Date::since2001((8400.5 + i) * day), calendar);
            ASSERT_EQ(slot.value().day, first.value().day + i) << zone;
        }
    }
}

TEST(HabitLog, AppIsStoredOnceForEachFiveMinutes) {
    const Calendar utc("UTC");
    HabitLog log;
    for (const double at : {541.0, 544.0, 546.0}) {
        log.record("a", Date::since2001(at * minute), utc);
    }
    EXPECT_THAT(log.events, ElementsAre(event("a", 0, 540, 2), event("a", 0, 545, 2)));

    // The same slot is looked for among the last 40 events, and no farther back.
    for (int i = 0; i < 39; ++i) {
        log.record("b" + std::to_string(i), Date::since2001(546 * minute), utc);
    }
    log.record("a", Date::since2001(546 * minute), utc);
    EXPECT_EQ(log.events.size(), 41U);
    log.record("c", Date::since2001(546 * minute), utc);
    log.record("a", Date::since2001(546 * minute), utc);
    EXPECT_EQ(log.events.size(), 43U);
}

TEST(HabitLog, RecordingForgetsWhatIsOlderThanSixWeeks) {
    const Calendar utc("UTC");
    HabitLog log;
    log.events = {event("old", 99, 0, 2), event("kept", 100, 0, 2), event("old", 98, 0, 2)};
    log.record("new", Date::since2001(142 * day), utc);
    EXPECT_THAT(log.events, ElementsAre(event("kept", 100, 0, 2), event("new", 142, 0, 4)));

    log.record("nowhere", Date::since2001(1e300), utc);
    EXPECT_EQ(log.events.size(), 2U);
}

TEST(HabitLog, FileIsReadBackAndAnythingElseReadsAsEmpty) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "habits.json";
    HabitLog log;
    log.events = {event("a", -5, 1435, 7)};
    log.keepDays = 7;
    ASSERT_TRUE(log.save(file));
    EXPECT_EQ(HabitLog::load(file), log);

    const std::string honest =
        R"({"events":[{"app":"a","day":1,"minute":0,"weekday":1}],"keepDays":42})";
    test::expectStrictReading<HabitLog>(honest);
    for (const auto& [what, with] : {std::pair(R"("day":1)", R"("day":1e300)"),
                                     {R"("minute":0)", R"("minute":1440)"},
                                     {R"("minute":0)", R"("minute":-5)"},
                                     {R"("weekday":1)", R"("weekday":0)"},
                                     {R"("weekday":1)", R"("weekday":8)"},
                                     {"42", "-1"},
                                     {"42", "1e300"}}) {
        const std::string text = test::changed(honest, what, with);
        EXPECT_EQ(HabitLog::load(folder.write("habits.json", text)), HabitLog{}) << text;
    }
}

} // namespace
} // namespace vellory::usage_tests
