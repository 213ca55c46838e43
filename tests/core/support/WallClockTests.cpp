// SPDX-License-Identifier: Apache-2.0
#include "Support/WallClock.h"

#include <limits>

#include <gtest/gtest.h>

namespace vellory::support_tests {
namespace {

using MinuteAndWeekday = std::pair<int, int>;

/// Whether the clock says what the calendar says, apart from the day's number.
testing::AssertionResult agrees(WallClock& clock, const Calendar& calendar, Date date) {
    const auto read = clock.read(date).transform(
        [](const auto& reading) { return MinuteAndWeekday(reading.minute, reading.weekday); });
    const auto expected = calendar.components(date).transform(
        [](const auto& c) { return MinuteAndWeekday(c.hour * 60 + c.minute, c.weekday); });
    return testing::AssertionResult(read == expected)
           << date.secondsSince2001 << ": " << testing::PrintToString(read) << ", not "
           << testing::PrintToString(expected);
}

TEST(WallClock, ReadsWhatTheCalendarReadsInAnyZone) {
    // Zones with halves and quarters of hours, with a change of half an hour (Lord Howe), with a
    // day that never was (Apia, 30 December 2011), and with changes at midnight (Havana, Gaza).
    const char* const zones[] = {"UTC",           "Europe/Stockholm", "America/New_York",
                                 "Asia/Kolkata",  "Asia/Kathmandu",   "Australia/Lord_Howe",
                                 "Pacific/Apia",  "America/Havana",   "Asia/Gaza",
                                 "Europe/Dublin", "Africa/Casablanca"};
    constexpr double minute = 60;
    for (const char* zone : zones) {
        const Calendar calendar(zone);
        WallClock clock(calendar);
        // Forty years in steps that meet every hour of the week.
        for (double at = -5e8; at < 8e8; at += 7 * 3600 * 13 + 61) {
            ASSERT_TRUE(agrees(clock, calendar, Date::since2001(at))) << zone;
        }
        // Each side of every change of the clocks within twenty years.
        Date date = Date::since2001(2.5e8);
        for (int change = 0; change < 40; ++change) {
            const auto stretch = calendar.stretch(date);
            ASSERT_TRUE(stretch);
            if (stretch->until == std::numeric_limits<double>::infinity()) {
                break;
            }
            const Date next = Date::since1970(stretch->until / 1000);
            for (const double offset : {-minute, -0.001, 0.0, 0.001, minute, 61 * minute}) {
                ASSERT_TRUE(agrees(clock, calendar, next + offset)) << zone << " " << offset;
            }
            date = next;
        }
    }
}

TEST(WallClock, DaysCountFromTheReferenceDateByTheCalendar) {
    WallClock stockholm{Calendar("Europe/Stockholm")};
    EXPECT_EQ(stockholm.read(Date::since2001(0)), (WallClock::Reading{0, 60, 2})); // a Monday
    EXPECT_EQ(stockholm.read(Date::since2001(-3601)), (WallClock::Reading{-1, 1439, 1}));
    EXPECT_EQ(stockholm.read(Date::since2001(86'400 * 7)), (WallClock::Reading{7, 60, 2}));
    // The day after the clocks went forward, 26 March 2001, is day 84: 31 + 28 + 25.
    EXPECT_EQ(stockholm.read(Date::since2001(84 * 86'400.0)), (WallClock::Reading{84, 120, 2}));
}

TEST(WallClock, FarDatesAndNumbersThatAreNoneReadAsNothing) {
    const Calendar calendar("Europe/Stockholm");
    WallClock clock(calendar);
    for (const double at :
         {1e300, -1e300, 3.3e12, -3.3e12, std::numeric_limits<double>::quiet_NaN(),
          std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(clock.read(Date::since2001(at))) << at;
    }
    // As far as the calendar reaches, on both sides.
    EXPECT_TRUE(agrees(clock, calendar, Date::since2001(3.2e12)));
    EXPECT_TRUE(agrees(clock, calendar, Date::since2001(-3.2e12)));
}

} // namespace
} // namespace vellory::support_tests
