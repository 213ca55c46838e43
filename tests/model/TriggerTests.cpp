// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "World.h"

// What opens workspaces by itself.

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Trigger = Workspace::Trigger;

struct TriggerDesk : World {
    AppModel& begin(std::map<std::string, std::vector<Trigger>> workspaces,
                    const std::string& zone = "UTC") {
        std::vector<Workspace> list;
        for (auto& [name, triggers] : workspaces) {
            Workspace workspace;
            workspace.id = next();
            workspace.name = name;
            workspace.triggers = std::move(triggers);
            list.push_back(std::move(workspace));
        }
        std::ignore = Workspace::save(list, paths().workspaces());
        AppModel& started = make(zone);
        started.start();
        return started;
    }
    /// The workspaces that were opened since the last question.
    std::vector<std::string> opened() {
        std::vector<std::string> names;
        for (const Notice& notice : std::exchange(notices, {})) {
            names.push_back(notice.text.substr(0, notice.text.find(" workspace")));
        }
        return names;
    }

    UuidSource next = counting(1);
};

const std::set<int> everyDay{1, 2, 3, 4, 5, 6, 7};

TEST(Triggers, ASchedulesMinuteOpensItOnce) {
    TriggerDesk desk;
    desk.clock.time = Date::since1970(1'795'424'370); // Monday 2026-11-23 08:59:30 UTC
    AppModel& model = desk.begin({{"Weekdays", {Trigger::schedule({2, 3, 4, 5, 6}, 9, 0)}},
                                  {"Weekend", {Trigger::schedule({1, 7}, 9, 0)}}});
    desk.scheduler.advance(29);
    EXPECT_THAT(desk.opened(), IsEmpty());
    desk.scheduler.advance(1);
    EXPECT_THAT(desk.opened(), ElementsAre("Weekdays"));
    desk.clock.time = desk.clock.time - 20; // the clock is set back a little
    desk.scheduler.advance(100);
    model.tick();
    EXPECT_THAT(desk.opened(), IsEmpty());
    desk.scheduler.advance(24 * 3600);
    EXPECT_THAT(desk.opened(), ElementsAre("Weekdays")) << "and again the next day";

    // The machine sleeps from before nine until a quarter past.
    desk.clock.time = desk.clock.time + (23 * 3600 + 50 * 60);
    desk.clock.time = desk.clock.time + 25 * 60;
    desk.scheduler.advance(3600);
    EXPECT_THAT(desk.opened(), IsEmpty()) << "what was missed is not made up for";
}

TEST(Triggers, SchedulesFollowTheClockOnTheWall) {
    // Summer time ends on 2026-10-25 at 01:00 UTC: 02:30 comes twice.
    TriggerDesk autumn;
    autumn.clock.time = Date::since1970(1'792'886'340); // 2026-10-24 23:59 UTC
    autumn.begin({{"Night", {Trigger::schedule(everyDay, 2, 30)}}}, "Europe/Stockholm");
    autumn.scheduler.advance(6 * 3600);
    EXPECT_THAT(autumn.opened(), ElementsAre("Night"));
}

TEST(Triggers, ADisplayOpensItsWorkspaceWhenItIsConnected) {
    TriggerDesk desk;
    desk.displays.connected = {{"Office Monitor 27", {0, 0, 100, 100}}};
    desk.begin({{"Office", {Trigger::display("office")}}, {"Any", {Trigger::display("")}}});
    desk.displays.changed();
    EXPECT_THAT(desk.opened(), IsEmpty()) << "it was there from the start";
    desk.displays.disconnect("Office Monitor 27");
    desk.displays.connect("OFFICE MONITOR 27");
    EXPECT_THAT(desk.opened(), ElementsAre("Office"));
    desk.displays.changed();
    EXPECT_THAT(desk.opened(), IsEmpty());
}

TEST(Triggers, AFocusOpensItsWorkspacesWhenItTurnsOn) {
    TriggerDesk desk;
    AppModel& model = desk.begin({{"A", {Trigger::focus("Work")}},
                                  {"B", {Trigger::focus("work")}},
                                  {"C", {Trigger::focus("Sleep")}}});
    desk.focusSource.on = "Work";
    desk.scheduler.advance(60);
    EXPECT_THAT(desk.opened(), IsEmpty()) << "reading it is not asked for";
    model.prefs().setReadFocusDirectly(true);
    desk.scheduler.advance(20);
    EXPECT_THAT(desk.opened(), ElementsAre("A", "B"));
    desk.scheduler.advance(200);
    EXPECT_THAT(desk.opened(), IsEmpty());
    desk.focusSource.on = "Sleep";
    desk.scheduler.advance(20);
    desk.focusSource.on = "Work";
    desk.scheduler.advance(20);
    EXPECT_THAT(desk.opened(), ElementsAre("C", "A", "B"));
    desk.focusSource.isReadable = false;
    desk.focusSource.on = "Sleep";
    desk.scheduler.advance(20);
    EXPECT_THAT(desk.opened(), IsEmpty());
    model.triggers().focusChanged("sleep");
    EXPECT_THAT(desk.opened(), ElementsAre("C"));
}

} // namespace
} // namespace vellory::test
