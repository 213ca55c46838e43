// SPDX-License-Identifier: Apache-2.0
#include "Usage/LastUsed.h"

#include <cmath>
#include <map>

#include <gmock/gmock.h>

#include "support/Lists.h"

namespace vellory::LastUsed {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double day = 86'400;
constexpr Date now = Date::since2001(1000 * day);

InstalledApp app(const std::string& id, const std::string& folder = "/Applications/") {
    return {id, id, folder + id + ".app"};
}

/// Dates in days before now, by the location's name.
Source daysAgo(std::map<std::string, double> days) {
    return [days](const std::filesystem::path& url) -> std::optional<Date> {
        const auto known = days.find(url.stem().string());
        return known == days.end() ? std::nullopt : std::optional(now - known->second * day);
    };
}

TEST(LastUsed, UnusedAppsComeStalestFirstAndNeverOpenedOnesBeforeThem) {
    std::vector<InstalledApp> apps{app("system", "/System/Applications/"),
                                   app("lookalike", "/Systems/")};
    for (const char* id : {"recent", "edge", "stale", "never", "stalest", "broken"}) {
        apps.push_back(app(id));
    }
    const Source source = daysAgo({{"recent", 89.9},
                                   {"edge", 90}, // exactly the cutoff is not before it
                                   {"stale", 90.1},
                                   {"stalest", 400},
                                   {"system", 400},
                                   {"broken", std::nan("")}});
    EXPECT_THAT(test::each(unused(apps, 90, now, source), &InstalledApp::bundleID),
                ElementsAre("lookalike", "never", "broken", "stalest", "stale"));
    EXPECT_THAT(unused({app("recent")}, 90, now, source), IsEmpty());
}

TEST(LastUsed, EmptyLogIsSeededInTheOrderOfTheDates) {
    const LaunchLog log = seeded({}, {app("b"), app("never"), app("c"), app("a"), app("broken")},
                                 daysAgo({{"a", 5}, {"b", 5}, {"c", 9}, {"broken", INFINITY}}));
    EXPECT_THAT(log.events, ElementsAre(LaunchLog::Event{"c", now - 9 * day, {}},
                                        LaunchLog::Event{"a", now - 5 * day, {}},
                                        LaunchLog::Event{"b", now - 5 * day, {}}));
    EXPECT_EQ(log.limit, LaunchLog::defaultLimit);
}

TEST(LastUsed, LogThatHoldsEventsIsNotSeeded) {
    LaunchLog log;
    log.record("a", now);
    const LaunchLog same = seeded(log, {app("b")}, [](const auto&) -> std::optional<Date> {
        ADD_FAILURE() << "asked the system";
        return now;
    });
    EXPECT_EQ(same, log);
}

} // namespace
} // namespace vellory::LastUsed
