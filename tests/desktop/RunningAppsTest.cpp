// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <csignal>
#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeService.h"
#include "LauncherOnDesktop.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Open = RunningApps::Open;

class RunningAppsTest : public LauncherOnDesktop {};

TEST_F(RunningAppsTest, AppIsListedOnceItsWindowIsThere) {
    session.addApp("org.test.Editor", "--class Editor");
    session.addApp("silent", ""); // Without any class, its window is known by its process.
    begin();
    EXPECT_THAT(apps->list(), IsEmpty());
    for (const char* id : {"org.test.Editor", "silent"}) {
        EXPECT_EQ(open(id), "");
        ASSERT_TRUE(becomesRunning(id)) << id;
    }
    const RunningApp listed = *running("org.test.Editor");
    EXPECT_TRUE(listed.isRegular);
    EXPECT_FALSE(listed.isHidden);
    EXPECT_EQ(kill(static_cast<pid_t>(listed.pid), 0), 0);
    EXPECT_THAT(view.listed(), SizeIs(2));
}

TEST_F(RunningAppsTest, SecondOpenBringsForwardInsteadOfStarting) {
    session.addApp("one", "--class one");
    session.addApp("two", "--class two");
    begin();
    open("one");
    ASSERT_TRUE(loop.runUntil([&] { return running("one") && view.active() != XCB_NONE; }));
    const std::int64_t pid = running("one")->pid;
    const xcb_window_t first = view.active();
    open("two");
    ASSERT_TRUE(loop.runUntil([&] { return running("two") && view.active() != first; }));
    EXPECT_EQ(open("one"), "");
    EXPECT_TRUE(loop.runUntil([&] { return view.active() == first; }));
    EXPECT_EQ(running("one")->pid, pid);
    EXPECT_THAT(view.listed(), SizeIs(2));
}

TEST_F(RunningAppsTest, NewInstanceStartsAgainOrAsksForANewWindow) {
    session.addApp("plain", "--class plain");
    session.addApp("browser", "--class browser",
                   "Actions=private;New-Window;\n[Desktop Action private]\nName=P\nExec=false\n"
                   "[Desktop Action New-Window]\nName=N\nExec=" VELLORY_WINDOW_APP
                   " --class browser --windows 2 --report " +
                       session.reportFile("action").string() + "\n");
    begin();
    for (const char* id : {"plain", "browser"}) {
        open(id);
        ASSERT_TRUE(becomesRunning(id)) << id;
        EXPECT_EQ(open(id, Open::newInstance), "");
    }
    EXPECT_TRUE(windowsBecome(5));
    EXPECT_THAT(session.report("action")["argv"], HasSubstr("--windows|2|"));
}

TEST_F(RunningAppsTest, HideUnhideAndQuit) {
    session.addApp("pair", "--class pair --windows 2");
    begin();
    open("pair");
    ASSERT_TRUE(windowsBecome(2));
    const auto becomesHidden = [&](bool isHidden) {
        return loop.runUntil([&] { return running("pair")->isHidden == isHidden; });
    };
    // It comes back when it is wanted in front, too.
    for (const auto& show : {&RunningApps::unhide, &RunningApps::activate}) {
        EXPECT_TRUE(apps->hide("pair"));
        EXPECT_TRUE(becomesHidden(true));
        EXPECT_TRUE(std::invoke(show, *apps, "pair"));
        EXPECT_TRUE(becomesHidden(false));
    }
    EXPECT_TRUE(apps->quit("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair"); }));
    for (const auto& ask :
         {&RunningApps::activate, &RunningApps::hide, &RunningApps::unhide, &RunningApps::quit}) {
        EXPECT_FALSE(std::invoke(ask, *apps, "pair"));
    }
}

// By the launcher or by somebody else, as from a terminal or a panel.
TEST_F(RunningAppsTest, EveryStartAndEndIsToldOnce) {
    const std::string gate = session.addGate("gate");
    for (const char* id : {"early", "many", "splash", "moved"}) {
        session.addApp(id, std::string("--class ") + id + " --windows 4");
    }
    begin();
    open("early");
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    ASSERT_TRUE(windowsBecome(4));
    begin(); // What runs already is no news to a launcher that starts now.
    told.clear();

    open("many");
    ASSERT_TRUE(windowsBecome(8));
    session.run({VELLORY_WINDOW_APP, "--class", "splash", "--splash", "--gate", gate});
    session.openGate(gate);
    ASSERT_TRUE(loop.runUntil([&] { return std::ranges::count(told, "launched splash") > 0; }));
    ASSERT_TRUE(windowsBecome(9));
    session.run({VELLORY_WINDOW_APP, "--class", "moved", "--reparented"});
    ASSERT_TRUE(loop.runUntil([&] { return std::ranges::count(told, "launched moved") > 0; }));
    ASSERT_TRUE(windowsBecome(10) && view.settle());
    EXPECT_TRUE(apps->quit("many"));
    ASSERT_TRUE(loop.runUntil([&] { return std::ranges::count(told, "quit many") > 0; }));
    std::erase_if(told, [](const std::string& what) {
        return what == "changed" || what == "quit moved"; // for as long as it is on its way
    });
    EXPECT_THAT(told,
                ElementsAre("launched many", "launched splash", "launched moved", "quit many"));
}

// What desktops put into a scope of its own was started, also when no window is to be seen.
TEST_F(RunningAppsTest, AnAppsScopeIsAStartAndItsWindowIsNotAnother) {
    FakeService systemd(session, "org.freedesktop.systemd1");
    session.addApp("org.test-er", "--class tester");
    begin();
    const auto isSubscribed = [&] {
        return std::ranges::any_of(systemd.calls(), [](const std::string& call) {
            return call.find("Manager.Subscribe") != std::string::npos;
        });
    };
    ASSERT_TRUE(loop.runUntil(isSubscribed));
    const auto emit = [&](const char* signal, const std::string& unit) {
        systemd.emit("/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager", signal,
                     g_variant_new("(so)", unit.c_str(), "/unit"));
    };
    emit("UnitNew", "app-desk-org.test\\x2der@autostart.service");
    emit("UnitNew", "app-desk-org.test.other-1.scope");
    emit("UnitNew", "app-desk-org.test\\x2der-4711.scope");
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    session.run({VELLORY_WINDOW_APP, "--class", "tester"});
    ASSERT_TRUE(becomesRunning("org.test-er"));
    ASSERT_TRUE(loop.runUntil([&] { return told.size() >= 2; }));
    EXPECT_THAT(told, ElementsAre("launched org.test-er", "changed"));
}

TEST_F(RunningAppsTest, WindowManagerThatStartsAnewMakesNoAppQuit) {
    session.addApp("steady", "--class steady");
    begin();
    open("steady");
    ASSERT_TRUE(becomesRunning("steady"));
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    session.stopWindowManager();
    ASSERT_TRUE(loop.runUntil([&] { return apps->list().empty(); }));
    session.startWindowManager();
    EXPECT_TRUE(becomesRunning("steady"));
    EXPECT_THAT(told, ElementsAre("launched steady"));
}

TEST_F(RunningAppsTest, WithoutAServerNothingRunsAndStartingWorks) {
    session.addApp("blind", "--report " + session.reportFile("blind").string());
    begin();
    session.stopServer();
    EXPECT_TRUE(loop.runUntil([&] { return apps->list().empty(); }));
    EXPECT_FALSE(apps->activate("blind"));
    EXPECT_EQ(open("blind"), "");
    apps.reset();

    SessionEnvironment bare = session.environment();
    std::erase_if(bare.variables, [](const auto& text) { return text.starts_with("DISPLAY="); });
    LinuxRunningApps without({bare}, entries, loop, loop);
    EXPECT_THAT(without.list(), IsEmpty());
    EXPECT_FALSE(without.quit("blind"));
}

} // namespace
} // namespace vellory::test
