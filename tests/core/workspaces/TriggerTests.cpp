// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/TriggerEngine.h"

#include <gmock/gmock.h>
#include <limits>

#include "Workspaces/OpenDesk.h"
#include "support/Lists.h"

namespace vellory::workspaces_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Trigger = Workspace::Trigger;

Workspace workspace(std::string name, std::vector<Trigger> triggers = {}) {
    Workspace out;
    out.id = Uuid::random();
    out.name = std::move(name);
    out.triggers = std::move(triggers);
    return out;
}

std::vector<std::string> names(const std::vector<Workspace>& list) {
    return test::each(list, &Workspace::name);
}

TEST(TriggerEngine, SchedulesFireOnTheirMinuteOfTheirDays) {
    const std::vector<Workspace> list{
        workspace("days", {Trigger::schedule({2, 3, 4, 5, 6}, 9, 0)}),
        workspace("other", {Trigger::display("9"), Trigger::focus("x")}),
        workspace("two", {Trigger::schedule({7}, 9, 0), Trigger::schedule({2}, 9, 0)}),
        workspace("odd", {Trigger::schedule({0, 8, 9}, 24, 60), Trigger::schedule({}, 9, 0)}),
    };
    const Calendar stockholm("Europe/Stockholm");
    const auto at = [&](int day, int hour, int minute, int second) {
        const auto date = stockholm.date({.year = 2026,
                                          .month = 3,
                                          .day = day,
                                          .hour = hour,
                                          .minute = minute,
                                          .second = second});
        return names(TriggerEngine::scheduled(list, date.value(), stockholm));
    };
    EXPECT_THAT(at(9, 9, 0, 0), ElementsAre("days", "two")); // a Monday
    EXPECT_THAT(at(9, 9, 0, 59), ElementsAre("days", "two"));
    EXPECT_THAT(at(9, 9, 1, 0), IsEmpty());
    EXPECT_THAT(at(9, 8, 59, 59), IsEmpty());
    EXPECT_THAT(at(10, 9, 0, 30), ElementsAre("days"));
    EXPECT_THAT(at(14, 9, 0, 30), ElementsAre("two")); // a Saturday
    EXPECT_THAT(at(15, 9, 0, 30), IsEmpty());          // a Sunday

    // The same moment is another hour elsewhere.
    const Date monday = Date::since1970(1'773'043'200); // 9 March 2026, 08:00 UTC
    EXPECT_THAT(names(TriggerEngine::scheduled(list, monday, stockholm)),
                ElementsAre("days", "two"));
    EXPECT_THAT(TriggerEngine::scheduled(list, monday, Calendar("UTC")), IsEmpty());
    for (const double seconds : {1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THAT(TriggerEngine::scheduled(list, Date{seconds}, stockholm), IsEmpty());
    }
}

TEST(TriggerEngine, DisplaysFireByAPartOfTheirName) {
    const std::vector<Workspace> list{
        workspace("office", {Trigger::display("office")}),
        workspace("empty", {Trigger::display("")}),
        workspace("focus", {Trigger::focus("office")}),
        workspace("any", {Trigger::display("tv"), Trigger::display("Monitor 27")}),
    };
    EXPECT_THAT(names(TriggerEngine::displays(list, {"TV", "Office Monitor 27"})),
                ElementsAre("office", "any"));
    EXPECT_THAT(names(TriggerEngine::displays(list, {"OFFICE"}, "tr")), IsEmpty());
    EXPECT_THAT(TriggerEngine::displays(list, {}), IsEmpty());
}

TEST(TriggerEngine, FocusFiresByItsWholeName) {
    const std::vector<Workspace> list{
        workspace("a", {Trigger::focus("Work")}), workspace("b", {Trigger::focus("Working")}),
        workspace("c", {Trigger::focus("")}),
        workspace("d", {Trigger::display("work"), Trigger::focus("WORK")})};
    EXPECT_THAT(names(TriggerEngine::focus(list, "work")), ElementsAre("a", "d"));
    EXPECT_THAT(TriggerEngine::focus(list, ""), IsEmpty());
}

TEST(TriggerEngine, LinkNamesAWorkspaceByNameOrIdentifier) {
    std::vector<Workspace> list{workspace("Deep Work"), workspace("a/b"), workspace("100%"),
                                workspace("deep work"), workspace("Ängö")};
    const std::string id = list[3].id.string();
    std::string lower = id;
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    list.push_back(workspace(id)); // a name that is another one's identifier
    const std::vector<std::pair<std::string, std::optional<std::size_t>>> cases{
        {"vellory://workspace/deep%20work", 0},    {"vellory://workspace/" + lower, 3},
        {"vellory://workspace/" + id, 3},          {"vellory://workspace/a/b", 1},
        {"vellory://workspace/a%2Fb?x#y", 1},      {"vellory://me@workspace:80/a/b", 1},
        {"vellory://workspace/100%25", 2},         {"vellory://workspace/%C3%84NG%C3%96", 4},
        {"vellory://workspace/%FF", std::nullopt}, {"vellory://workspace/", std::nullopt},
        {"vellory://Workspace/a/b", std::nullopt}, {"VELLORY://workspace/a/b", std::nullopt},
        {"vellory:workspace/a/b", std::nullopt},
    };
    for (const auto& [text, index] : cases) {
        const auto link = Link::parse(text);
        ASSERT_TRUE(link) << text;
        EXPECT_EQ(TriggerEngine::workspaceFor(*link, list),
                  index ? std::optional(list[*index]) : std::nullopt)
            << text;
    }
    list.push_back(workspace("")); // what cannot be decoded is the empty name
    EXPECT_EQ(TriggerEngine::workspaceFor(Link::parse("vellory://workspace/%FF").value(), list),
              list.back());
}

TEST(TriggerState, FocusFiresOnceUntilAnotherOneComes) {
    TriggerState state;
    EXPECT_FALSE(state.focusChanged(""));
    EXPECT_TRUE(state.focusChanged("Work"));
    EXPECT_FALSE(state.focusChanged("Work"));
    EXPECT_FALSE(state.focusChanged(""));
    EXPECT_FALSE(state.focusChanged("Work"));
    EXPECT_TRUE(state.focusChanged("Sleep"));
    EXPECT_TRUE(state.focusChanged("Work"));
}

TEST(OpenDesk, BecomesAWorkspaceOfAppsFoldersAndLinks) {
    using Item = Workspace::Item;
    const OpenDesk desk{.running = {"mail", "com.apple.finder", "com.quorvel.vellory", "", "web"},
                        .folders = {"/home/me/Notes"},
                        .tabs = {"https://b", "about:blank", "http://a", "https://b", "HTTP://c"},
                        .windows = {{"mail", 0, {1, 2, 300, 400}, std::nullopt}}};
    const Uuid id = Uuid::random();
    const Workspace made = desk.workspace(id, "Snapshot");
    Workspace expected;
    expected.id = id;
    expected.name = "Snapshot";
    expected.symbol = "camera.viewfinder";
    expected.items = {Item::app("mail"), Item::app("web"), Item::file("/home/me/Notes"),
                      Item::url("https://b"), Item::url("http://a")};
    expected.windows = desk.windows;
    EXPECT_EQ(made, expected);
}

} // namespace
} // namespace vellory::workspaces_tests
