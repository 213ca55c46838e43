// SPDX-License-Identifier: Apache-2.0
#include "Support/Calendar.h"

#include <limits>

#include <gtest/gtest.h>

namespace vellory::support_tests {

void PrintTo(const Calendar::Components& c, std::ostream* out) {
    *out << c.year << '-' << c.month << '-' << c.day << ' ' << c.hour << ':' << c.minute << ':'
         << c.second << " weekday " << c.weekday;
}

namespace {

using Components = Calendar::Components;

constexpr double hour = 3'600;

Date utc(int year, int month, int day, int hours = 0, int minutes = 0, int seconds = 0) {
    return Calendar("UTC").date({year, month, day, hours, minutes, seconds}).value();
}

TEST(Calendar, ReadsAMomentAsTheWallClockOfItsZone) {
    const Date moment = Date::since1970(1'700'000'000); // 2023-11-14 22:13:20 UTC, a Tuesday
    EXPECT_EQ(Calendar("UTC").components(moment), (Components{2023, 11, 14, 22, 13, 20, 3}));
    EXPECT_EQ(Calendar("Asia/Kolkata").components(moment),
              (Components{2023, 11, 15, 3, 43, 20, 4}));
    EXPECT_EQ(Calendar("America/New_York").components(moment),
              (Components{2023, 11, 14, 17, 13, 20, 3}));
    EXPECT_EQ(Calendar("Not/AZone").components(moment), Calendar("UTC").components(moment));
    // Fractions belong to the second that has begun, also before 1970.
    EXPECT_EQ(Calendar("UTC").components(moment + 0.9995)->second, 20);
    EXPECT_EQ(Calendar("UTC").components(Date::since1970(-0.5)),
              (Components{1969, 12, 31, 23, 59, 59, 4}));
}

TEST(Calendar, TheYearTurnsWithTheZone) {
    const Calendar sydney("Australia/Sydney");
    const Date moment = utc(2023, 12, 31, 13, 0, 0);
    EXPECT_EQ(sydney.components(moment), (Components{2024, 1, 1, 0, 0, 0, 2}));
    EXPECT_EQ(sydney.components(moment - 1), (Components{2023, 12, 31, 23, 59, 59, 1}));
    EXPECT_EQ(sydney.startOfDay(moment - 1), utc(2023, 12, 30, 13));
    EXPECT_EQ(sydney.addingDays(moment, -1), utc(2023, 12, 30, 13));
    EXPECT_EQ(Calendar("UTC").addingDays(utc(2024, 2, 28), 1), utc(2024, 2, 29));
    EXPECT_EQ(Calendar("UTC").addingDays(utc(2023, 2, 28), 1), utc(2023, 3, 1));
}

TEST(Calendar, DaysHave23And25HoursWhenTheClocksChange) {
    const Calendar stockholm("Europe/Stockholm");
    for (const auto& [day, month, hours] : {std::tuple{31, 3, 23}, {27, 10, 25}, {26, 10, 24}}) {
        const Date noon = stockholm.date({2024, month, day, 12}).value();
        const Date begin = stockholm.startOfDay(noon).value();
        const Date end = stockholm.addingDays(begin, 1).value();
        EXPECT_EQ(end.since(begin), hours * hour) << day << '.' << month;
        EXPECT_EQ(stockholm.startOfDay(end - 1), begin);
        EXPECT_EQ(stockholm.startOfDay(end), end);
        EXPECT_EQ(stockholm.components(stockholm.addingDays(noon, 1).value())->hour, 12);
    }
}

TEST(Calendar, ASkippedTimeMovesForwardAndOfTwoEqualOnesTheFirstIsMeant) {
    const Calendar stockholm("Europe/Stockholm"); // on 31 March 2:00 becomes 3:00
    EXPECT_EQ(stockholm.date({2024, 3, 31, 2, 30}), utc(2024, 3, 31, 1, 30));
    EXPECT_EQ(stockholm.components(utc(2024, 3, 31, 1, 30))->hour, 3);
    // The day after 2:30 of the day before lands in the gap as well.
    EXPECT_EQ(stockholm.addingDays(utc(2024, 3, 30, 1, 30), 1), utc(2024, 3, 31, 1, 30));

    const Date first = utc(2024, 10, 27, 0, 30); // 3:00 becomes 2:00
    EXPECT_EQ(stockholm.date({2024, 10, 27, 2, 30}), first);
    EXPECT_EQ(stockholm.components(first), stockholm.components(first + hour));
    EXPECT_EQ(stockholm.startOfDay(first), stockholm.startOfDay(first + hour));
}

TEST(Calendar, ADayWhoseMidnightIsSkippedStartsAtItsFirstMoment) {
    const Calendar saoPaulo("America/Sao_Paulo"); // on 2018-11-04, 0:00 became 1:00
    const Date first = utc(2018, 11, 4, 3);
    for (const Date moment : {first, first + 5 * hour, first + 22 * hour}) {
        EXPECT_EQ(saoPaulo.startOfDay(moment), first);
    }
    EXPECT_EQ(saoPaulo.components(first)->hour, 1);
    EXPECT_EQ(saoPaulo.startOfDay(first - 1), utc(2018, 11, 3, 3));
    EXPECT_EQ(saoPaulo.addingDays(utc(2018, 11, 3, 3), 1), first);
    EXPECT_EQ(saoPaulo.addingDays(utc(2018, 11, 3, 3), 2), utc(2018, 11, 5, 2));
}

TEST(Calendar, ADayWhoseMidnightComesTwiceStartsAtTheFirst) {
    const Calendar havana("America/Havana"); // on 2023-11-05, 1:00 became 0:00
    const Date first = utc(2023, 11, 5, 4);
    for (const Date moment : {first, first + hour, first + 2 * hour, first + 20 * hour}) {
        EXPECT_EQ(havana.startOfDay(moment), first) << moment.since(first);
    }
    EXPECT_EQ(havana.components(first + hour)->hour, 0);
}

TEST(Calendar, ADayThatAZoneLeavesOutIsSteppedOver) {
    const Calendar apia("Pacific/Apia"); // went from 2011-12-29 straight to 2011-12-31
    const Date before = apia.date({2011, 12, 29, 12}).value();
    const Date after = apia.date({2011, 12, 31, 12}).value();
    EXPECT_EQ(after.since(before), 24 * hour);
    EXPECT_EQ(apia.components(apia.startOfDay(after).value())->day, 31);
}

TEST(Calendar, PartsThatOverflowCarryOver) {
    const Calendar calendar("UTC");
    EXPECT_EQ(calendar.date({2023, 1, 32}), utc(2023, 2, 1));
    EXPECT_EQ(calendar.date({2023, 13, 1}), utc(2024, 1, 1));
    EXPECT_EQ(calendar.date({2024, 3, 0}), utc(2024, 2, 29));
    EXPECT_EQ(calendar.date({2023, 12, 31, 24}), utc(2024, 1, 1));
    EXPECT_EQ(calendar.date({1500, 2, 29})->since(utc(1500, 3, 1)), 0); // Gregorian for all time
}

TEST(Calendar, RefusesDatesPastAllReason) {
    const Calendar calendar("Europe/Stockholm");
    for (const double seconds : {std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), 1e15, -1e15, 1e300}) {
        const Date date{seconds};
        EXPECT_EQ(calendar.components(date), std::nullopt) << seconds;
        EXPECT_EQ(calendar.startOfDay(date), std::nullopt) << seconds;
        EXPECT_EQ(calendar.addingDays(date, 1), std::nullopt) << seconds;
    }
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_EQ(calendar.date({most, 1, 1}), std::nullopt);
    EXPECT_EQ(calendar.date({-most, 1, 1}), std::nullopt);
    EXPECT_EQ(calendar.date({2024, most, most, most, most, most}), std::nullopt);
    EXPECT_EQ(calendar.addingDays(Date{}, most), std::nullopt);
    EXPECT_EQ(calendar.addingDays(Date{}, -most), std::nullopt);
    EXPECT_EQ(calendar.date({99'999, 1, 1}).has_value(), true);
}

} // namespace
} // namespace vellory::support_tests
