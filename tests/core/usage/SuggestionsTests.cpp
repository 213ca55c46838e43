// SPDX-License-Identifier: Apache-2.0
#include "Usage/Suggestions.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

namespace vellory::Suggestions {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double hour = 3600;
constexpr double day = 86'400;
/// Monday 1 January 2024, 12:00 UTC.
constexpr Date monday = Date::since2001(8400 * day + 12 * hour);

const Uuid work = *Uuid::parse("3F2504E0-4F89-41D3-9A0C-0305E82C3301");
const Uuid other = *Uuid::parse("3F2504E0-4F89-41D3-9A0C-0305E82C3302");

/// Which of two apps is suggested first, "a" launched as `a` says and "b" as `b` says.
std::vector<BundleID> ranked(std::vector<LaunchLog::Event> events,
                             Context context = {monday, {}, {}},
                             const Calendar& calendar = Calendar("UTC")) {
    LaunchLog log;
    log.events = std::move(events);
    return rank(log, context, {"a", "b", "c"}, 10, calendar);
}

/// Events of "b", whose weights add up to a bit more or less than `weight`: an event of exactly now
/// weighs 1.15, and one of `age` days of the same weekday and time 1.15 * 2^(-age / 14).
std::vector<LaunchLog::Event> yardstick(double weight) {
    std::vector<LaunchLog::Event> events;
    constexpr double step = 1.15 / 256; // 112 days ago, eight half-lives
    for (double sum = 0; sum + step / 2 < weight; sum += step) {
        events.push_back({"b", monday - 112 * day, {}});
    }
    return events;
}

/// Asserts the weight of one event to within half a percent of 1.15, by ranking it between two
/// piles of other events.
void expectWeight(const LaunchLog::Event& event, double weight, const std::string& what,
                  const Context& context = {monday, {}, {}}) {
    auto less = yardstick(weight - 0.01);
    less.push_back(event);
    EXPECT_THAT(ranked(less, context), ElementsAre("a", "b")) << what << ", lighter pile";
    auto more = yardstick(weight + 0.01);
    more.push_back(event);
    EXPECT_THAT(ranked(more, context), ElementsAre("b", "a")) << what << ", heavier pile";
}

TEST(Suggestions, WeightOfALaunchIsRecencyTimesTimeOfDayTimesDay) {
    struct Case {
        const char* what;
        double ago;
        double weight;
    };
    const double oneHour = std::exp(-1 / 4.5) + 0.15;
    const double twelveHours = std::exp(-144 / 4.5) + 0.15;
    const auto recency = [](double days) { return std::exp2(-days / 14); };
    const Case cases[] = {
        {"now", 0, 1.15},
        {"an hour ago", hour, oneHour * recency(1 / 24.0)},
        {"two weeks ago", 14 * day, 0.575},
        {"an hour off, a week ago", 7 * day - hour, oneHour * recency(7 - 1 / 24.0)},
        {"twelve hours ago, on Monday", 12 * hour, twelveHours * recency(0.5)},
        {"Friday", 3 * day, 1.15 * 0.7 * recency(3)},
        {"Sunday", 1 * day, 1.15 * 0.35 * recency(1)},
    };
    for (const Case& c : cases) {
        expectWeight({"a", monday - c.ago, {}}, c.weight, c.what);
    }
    expectWeight({"a", monday, work}, 1.15 * 2.5, "the open workspace", {monday, work, {}});
    expectWeight({"a", monday, other}, 1.15, "another workspace", {monday, work, {}});
    expectWeight({"a", monday, work}, 1.15, "no workspace open");
}

TEST(Suggestions, SundayIsLikeSaturdayAndUnlikeMonday) {
    // Seen from Sunday 7 January: Saturday 0.7 * 2^(-1/14), Monday before 0.35 * 2^(-6/14).
    const Context sunday{monday + 6 * day, {}, {}};
    EXPECT_THAT(ranked({{"a", monday + 5 * day, {}}, {"b", monday, {}}}, sunday),
                ElementsAre("a", "b"));
}

TEST(Suggestions, TimesOfDayAreComparedRoundTheClock) {
    // Seen at 00:30 on Tuesday: Monday 23:30 is an hour away, and Monday 21:00 three and a half.
    const Context night{monday + 12.5 * hour, {}, {}};
    EXPECT_THAT(ranked({{"a", monday + 9 * hour, {}}, {"b", monday + 11.5 * hour, {}}}, night),
                ElementsAre("b", "a"));
}

TEST(Suggestions, LaunchesOfTheFutureAndOlderThan120DaysCountForNothing) {
    EXPECT_THAT(ranked({{"a", monday + 1, {}},
                        {"b", monday - 120 * day, {}},
                        {"c", monday - 120 * day + 1, {}}}),
                ElementsAre("c"));
    const double inf = std::numeric_limits<double>::infinity();
    for (const double far : {1e300, -1e300, inf, -inf, std::nan("")}) {
        EXPECT_THAT(ranked({{"a", Date::since2001(far), {}}}), IsEmpty()) << far;
    }
    // The other way round, with a clock that is far off: no day and no time, but still an age.
    const Date far = Date::since2001(1e13);
    EXPECT_THAT(ranked({{"a", far, {}}, {"b", monday, {}}}, {far, {}, {}}), ElementsAre("a"));
}

TEST(Suggestions, RunningAppsAreDemotedNotRemoved) {
    // 1.15 * 0.6 = 0.69 against 1.15 * 2^(-7/14) = 0.81, and against 0.575 of two weeks ago.
    const Context context{monday, {}, {"a", "unknown"}};
    EXPECT_THAT(
        ranked({{"a", monday, {}}, {"b", monday - 7 * day, {}}, {"c", monday - 14 * day, {}}},
               context),
        ElementsAre("b", "a", "c"));
}

TEST(Suggestions, EqualScoresComeByIdentifierAndTheListIsCut) {
    LaunchLog log;
    for (const char* app : {"c", "a", "d", "b"}) {
        log.record(app, monday);
    }
    const std::set<BundleID> among{"b", "c", "d"};
    const Calendar utc("UTC");
    EXPECT_THAT(rank(log, {monday, {}, {}}, among, 2, utc), ElementsAre("b", "c"));
    EXPECT_THAT(rank(log, {monday, {}, {}}, among, 0, utc), IsEmpty());
    EXPECT_THAT(rank(log, {monday, {}, {}}, {}, 9, utc), IsEmpty());
    EXPECT_THAT(rank(LaunchLog{}, {monday, {}, {}}, among, 9, utc), IsEmpty());
}

TEST(Suggestions, TimeOfDayIsTheWallClocksAlsoAcrossAChangeOfTheClocks) {
    // Stockholm, Monday 1 April 2024 at 09:00 (07:00 UTC), the day after summer time began. "a" was
    // opened a week before at 09:00 there (08:00 UTC), "b" at 08:00 there (07:00 UTC).
    const Date now = monday + (91 * day - 5 * hour);
    const std::vector<LaunchLog::Event> events{{"b", now - 7 * day, {}},
                                               {"a", now - 7 * day + hour, {}}};
    EXPECT_THAT(ranked(events, {now, {}, {}}, Calendar("Europe/Stockholm")), ElementsAre("a", "b"));
    EXPECT_THAT(ranked(events, {now, {}, {}}, Calendar("UTC")), ElementsAre("b", "a"));
}

} // namespace
} // namespace vellory::Suggestions
