// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <csignal>
#include <functional>
#include <string>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "FakeService.h"
#include "LauncherOnDesktop.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Open = RunningApps::Open;

class RunningAppsTest : public LauncherOnDesktop {};

TEST_F(RunningAppsTest, AppIsListedOnceItsWindowIsThere) {
    session.addApp("org.test.Editor", "--class Editor");
    begin();
    EXPECT_THAT(apps->list(), IsEmpty());
    EXPECT_EQ(open("org.test.Editor"), "");
    ASSERT_TRUE(becomesRunning("org.test.Editor"));
    const RunningApp listed = *running("org.test.Editor");
    EXPECT_TRUE(listed.isRegular);
    EXPECT_FALSE(listed.isHidden);
    EXPECT_EQ(kill(static_cast<pid_t>(listed.pid), 0), 0);
    EXPECT_EQ(windowCount(), 1U);
}

TEST_F(RunningAppsTest, SecondOpenBringsForwardInsteadOfStarting) {
    session.addApp("one", "--class one");
    session.addApp("two", "--class two");
    begin();
    open("one");
    ASSERT_TRUE(loop.runUntil([&] { return running("one") && activeWindow() != XCB_NONE; }));
    const std::int64_t pid = running("one")->pid;
    const xcb_window_t first = activeWindow();
    open("two");
    ASSERT_TRUE(loop.runUntil([&] { return running("two") && activeWindow() != first; }));
    EXPECT_EQ(open("one"), "");
    EXPECT_TRUE(loop.runUntil([&] { return activeWindow() == first; }));
    EXPECT_EQ(running("one")->pid, pid);
    EXPECT_EQ(windowCount(), 2U);
}

// A slow app that is clicked twice, or opened by a workspace while it starts, comes up once.
TEST_F(RunningAppsTest, SecondOpenWhileTheAppStartsDoesNotStartItAgain) {
    const auto gate = session.folder().path() / "gate";
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    session.addApp("slow", "--class slow --gate " + gate.string());
    begin();
    EXPECT_EQ(open("slow"), "");
    EXPECT_EQ(open("slow"), "");
    const int opened = ::open(gate.c_str(), O_WRONLY);
    ASSERT_TRUE(becomesRunning("slow"));
    close(opened);
    EXPECT_EQ(windowCount(), 1U);
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
    EXPECT_TRUE(loop.runUntil([&] { return windowCount() == 5; }));
    EXPECT_THAT(session.report("action")["argv"], HasSubstr("--windows|2|"));
}

TEST_F(RunningAppsTest, HideUnhideAndQuit) {
    session.addApp("pair", "--class pair --windows 2");
    session.addApp("stubborn", "--class stubborn --stubborn");
    begin();
    for (const char* id : {"pair", "stubborn"}) {
        open(id);
        ASSERT_TRUE(becomesRunning(id)) << id;
    }
    ASSERT_TRUE(loop.runUntil([&] { return windowCount() == 3; }));
    EXPECT_TRUE(apps->hide("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return running("pair")->isHidden; }));
    EXPECT_FALSE(running("stubborn")->isHidden);
    EXPECT_TRUE(apps->unhide("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair")->isHidden; }));
    EXPECT_TRUE(apps->hide("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return running("pair")->isHidden; }));
    EXPECT_TRUE(apps->activate("pair")); // Comes back when it is wanted in front, too.
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair")->isHidden; }));
    EXPECT_TRUE(apps->quit("stubborn"));
    EXPECT_TRUE(apps->quit("pair"));
    EXPECT_TRUE(loop.runUntil([&] { return !running("pair"); }));
    EXPECT_TRUE(running("stubborn").has_value());
    for (const auto& ask :
         {&RunningApps::activate, &RunningApps::hide, &RunningApps::unhide, &RunningApps::quit}) {
        EXPECT_FALSE(std::invoke(ask, *apps, "pair"));
    }
}

TEST_F(RunningAppsTest, ObserverHearsOfEachAppOnce) {
    const auto gate = session.folder().path() / "gate";
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    session.addApp("early", "--class early");
    session.addApp("many", "--class many --windows 4 --splash --gate " + gate.string());
    begin();
    open("early");
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty(); }));
    begin(); // What runs already is no news to a launcher that starts now.
    told.clear();
    open("many");
    const int opened = ::open(gate.c_str(), O_WRONLY);
    ASSERT_TRUE(loop.runUntil([&] { return !told.empty() && windowCount() == 5; }));
    close(opened);
    EXPECT_TRUE(apps->quit("many"));
    ASSERT_TRUE(loop.runUntil([&] { return told.size() >= 2 && windowCount() == 1; }));
    EXPECT_THAT(told, ElementsAre("launched many", "quit many"));
}

// Started by somebody else, as from a terminal or a panel.
TEST_F(RunningAppsTest, StartsFromElsewhereAreToldOncePerStart) {
    const auto gate = session.folder().path() / "gate";
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    const std::string again = gate.string() + ".again";
    ASSERT_EQ(mkfifo(again.c_str(), 0600), 0);
    const auto openGate = [&] { close(::open(gate.c_str(), O_WRONLY)); };
    session.addApp("many", "--class many");
    session.addApp("splash", "--class splash");
    session.addApp("flash", "--class flash");
    session.addApp("moved", "--class moved");
    begin();
    const auto isTold = [&](const std::string& what) {
        return std::ranges::find(told, what) != told.end();
    };

    session.run({VELLORY_WINDOW_APP, "--class", "many", "--windows", "5"});
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched many") && windowCount() == 5; }));
    session.run({VELLORY_WINDOW_APP, "--class", "splash", "--splash", "--gate", gate});
    openGate();
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched splash") && windowCount() == 6; }));
    session.run({VELLORY_WINDOW_APP, "--class", "moved", "--reparented"});
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched moved") && windowCount() == 7; }));
    // Its first window goes before the second comes.
    session.run({VELLORY_WINDOW_APP, "--class", "flash", "--flash", "--gate", gate});
    ASSERT_TRUE(loop.runUntil([&] { return isTold("launched flash"); }));
    openGate();
    ASSERT_TRUE(loop.runUntil([&] { return isTold("quit flash"); }));
    close(::open(again.c_str(), O_WRONLY));
    ASSERT_TRUE(loop.runUntil([&] { return isTold("changed") && running("flash"); }));

    std::erase_if(told, [](const std::string& what) { return !what.starts_with("launched"); });
    EXPECT_THAT(
        told, ElementsAre("launched many", "launched splash", "launched moved", "launched flash"));
}

// What desktops put into a scope of its own was started, also when no window is to be seen.
TEST_F(RunningAppsTest, AnAppsScopeIsAStartAndItsWindowIsNotAnother) {
    FakeService systemd(session, "org.freedesktop.systemd1");
    session.addApp("org.test-er", "--class tester");
    begin();
    const auto tick = loop.every(0.01, [] {}); // The calls come on another thread.
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

// A window without any class of its own is known by the process behind it.
TEST_F(RunningAppsTest, WindowWithoutClassIsKnownByItsProcess) {
    session.addApp("silent", "");
    begin();
    open("silent");
    EXPECT_TRUE(becomesRunning("silent"));
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
