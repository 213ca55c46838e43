// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/World.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct Launching : testing::Test {
    World world;
    AppModel& model = world.startWith({"mail"}, board({app("mail")}));
};
using LaunchObserver = Launching;

TEST_F(Launching, AsksThePlatformForInstalledAppsOnly) {
    world.catalogue.actionsOf = {{"mail", {{"compose", "New Message"}}}};
    model.launch("mail");
    model.launchNew("mail");
    model.perform("mail", "compose");
    model.launch("nobody");
    model.launchNew("nobody");
    model.perform("nobody", "compose");
    EXPECT_THAT(world.runningApps.asked, ElementsAre("open mail", "new mail", "compose mail"));
    EXPECT_THAT(model.actions("mail"), ElementsAre(AppAction{"compose", "New Message"}));
    EXPECT_THAT(model.actions("nobody"), IsEmpty());
}

TEST_F(Launching, AFailureIsToldAndASuccessIsNot) {
    model.rename("mail", "Post");
    world.notices.clear();
    model.launch("mail");
    world.runningApps.completions.at(0)(std::nullopt);
    EXPECT_THAT(world.notices, IsEmpty());
    model.launch("mail");
    world.runningApps.completions.at(1)("The program is missing.");
    EXPECT_THAT(world.notices,
                ElementsAre(Notice{"Couldn't open Post", "exclamationmark.triangle", 3.0}));
}

TEST_F(Launching, AnAnswerAfterTheModelIsGoneIsDropped) {
    model.launch("mail");
    model.refreshBadges();
    world.scheduler.runBackground();
    world.model.reset();
    world.runningApps.completions.at(0)("The program is missing.");
    world.scheduler.deliver();
    EXPECT_THAT(world.notices, IsEmpty());
}

TEST_F(LaunchObserver, CountsEveryStartAndWritesABurstOnce) {
    const auto stored = [&] { return LaunchLog::load(world.paths().launchLog()).events; };
    const Date first = world.clock.time;
    world.runningApps.starts("mail");
    world.scheduler.advance(4.9);
    model.workspaces().setActive(uuid(7));
    world.runningApps.starts("from-elsewhere");
    world.runningApps.starts(""); // nobody knows which
    world.scheduler.advance(4.9);
    EXPECT_THAT(stored(), IsEmpty()) << "put off by the second start";
    world.scheduler.advance(0.1);
    EXPECT_THAT(stored(), ElementsAre(LaunchLog::Event{"mail", first, {}},
                                      LaunchLog::Event{"from-elsewhere", first + 4.9, uuid(7)}));
    EXPECT_EQ(UsageStore::load(world.paths().usage()).count("mail"), 1);
}

TEST_F(LaunchObserver, WhatWaitsIsWrittenWhenTheProgramEnds) {
    world.runningApps.starts("mail");
    world.model.reset();
    EXPECT_EQ(UsageStore::load(world.paths().usage()).count("mail"), 1);
    EXPECT_EQ(LaunchLog::load(world.paths().launchLog()).events.size(), 1U);
    EXPECT_EQ(HabitLog::load(world.paths().habits()).events.size(), 1U);
}

TEST(RunningApps, AreThoseWithWindowsAndFollowStartsAndQuits) {
    World world;
    world.runningApps.apps = {{.bundleID = "agent", .isRegular = false}, {.bundleID = "mail"}};
    AppModel& model = world.startWith({"mail", "web"}, board({}));
    EXPECT_THAT(model.running(), ElementsAre("mail"));
    int changes = 0;
    QObject::connect(&model, &AppModel::runningChanged, [&] { ++changes; });
    world.runningApps.starts("web");
    world.runningApps.quits("mail");
    EXPECT_THAT(model.running(), ElementsAre("web"));
    EXPECT_EQ(changes, 2);
}

TEST(Badges, ArriveLaterForRunningAppsAndOnlyWhenWanted) {
    World world;
    world.runningApps.apps = {{.bundleID = "mail"}};
    world.desktop.badgeTexts = {{"mail", "3"}, {"closed", "1"}};
    AppModel& model = world.startWith({"mail"}, board({app("mail")}));
    EXPECT_THAT(model.badges(), IsEmpty());
    world.scheduler.runBackground();
    EXPECT_THAT(model.badges(), IsEmpty()) << "not on the other thread";
    world.scheduler.deliver();
    EXPECT_THAT(model.badges(), ElementsAre(Pair("mail", "3")));

    world.runningApps.quits("mail");
    EXPECT_THAT(model.badges(), IsEmpty()) << "a badge goes with its app";
    world.runningApps.starts("mail");
    model.refreshBadges();
    world.scheduler.runBackground();
    model.prefs().setShowBadges(false);
    EXPECT_THAT(model.badges(), IsEmpty());
    world.scheduler.deliver();
    EXPECT_THAT(model.badges(), IsEmpty()) << "an answer that was overtaken";
}

} // namespace vellory::test
