// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "World.h"

// Workspaces on a machine of fakes: what opening asks of the desk, and that closing undoes it.

namespace vellory::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Item = Workspace::Item;

struct WorkspaceDesk : World {
    Workspace workspace(const std::string& name, std::vector<Item> items,
                        Workspace::Others others = Workspace::Others::keep) {
        Workspace made;
        made.id = next();
        made.name = name;
        made.symbol = "pencil";
        made.items = std::move(items);
        made.others = others;
        return made;
    }
    /// Begins with these apps installed; those in `open` run.
    AppModel& begin(const std::vector<BundleID>& apps, const std::vector<BundleID>& open = {}) {
        install(apps);
        for (const BundleID& id : open) {
            runningApps.apps.push_back({.bundleID = id, .pid = 1});
        }
        return start();
    }
    /// What the running apps were asked since the last question.
    std::vector<std::string> asked() { return std::exchange(runningApps.asked, {}); }
    RunningApp& running(const BundleID& id) {
        return *std::ranges::find(runningApps.apps, id, &RunningApp::bundleID);
    }

    UuidSource next = counting(1);
};

struct Workspaces : testing::Test {
    WorkspaceDesk desk;
};

TEST_F(Workspaces, TheListIsKeptAndItsDependantsAreToldInOrder) {
    AppModel& model = desk.begin({"a"});
    std::vector<std::string> told;
    QObject::connect(&model, &AppModel::storedDataChanged, [&] { told.emplace_back("data"); });
    QObject::connect(&model.workspaceShortcuts(), &WorkspaceShortcuts::changed,
                     [&] { told.emplace_back("shortcuts"); });
    QObject::connect(&model, &AppModel::workspaceIndexChanged, [&] { told.emplace_back("index"); });
    Workspace first = desk.workspace("First", {});
    const Workspace second = desk.workspace("Second", {Item::app("a")});
    model.updateWorkspace(first);
    EXPECT_THAT(told, ElementsAre("data", "shortcuts", "index"));
    model.updateWorkspace(second);
    first.name = "a/b \"c\"\n\xE2\x80\xAE";
    model.updateWorkspace(first);
    EXPECT_THAT(Workspace::load(desk.paths().workspaces()), ElementsAre(first, second));

    model.workspaceShortcuts().setShortcut(second.id, "Ctrl+Alt+W");
    EXPECT_THAT(desk.hotKeys.shortcuts,
                ElementsAre(testing::Pair(second.id.string(), "Ctrl+Alt+W")));
    model.workspaceShortcuts().setShortcut(first.id, "Ctrl+Alt+W");
    EXPECT_EQ(model.workspaceShortcuts().shortcut(second.id), "") << "it went over to the other";
    desk.hotKeys.press(first.id.string());
    EXPECT_EQ(model.workspaces().active(), first.id);

    model.deleteWorkspace(first.id);
    EXPECT_THAT(Workspace::load(desk.paths().workspaces()), ElementsAre(second));
    EXPECT_THAT(desk.hotKeys.shortcuts, IsEmpty());
    EXPECT_THAT(model.prefs().workspaceShortcuts(), IsEmpty());
    EXPECT_EQ(model.workspaces().active(), std::nullopt);
    EXPECT_TRUE(model.session()) << "its session can still be closed";
    model.closeWorkspace(false);
    EXPECT_EQ(desk.notices.back(), (Notice{"Workspace closed", "rectangle.3.group", 1.8}));
}

TEST_F(Workspaces, OpeningStartsWhatIsMissingAndClosingPutsEverythingBack) {
    AppModel& model = desk.begin({"editor", "mail", "chat", "music"},
                                 {"mail", "chat", "org.files", "music", "com.apple.finder"});
    desk.running("music").isHidden = true;
    Workspace writing =
        desk.workspace("Writing",
                       {Item::url("https://a.example/x y"), Item::app("gone"), Item::app("editor"),
                        Item::file("/home/me/Notes"), Item::app("mail"), Item::url("not a link")},
                       Workspace::Others::hide);
    int hides = 0;
    QObject::connect(&model, &AppModel::launcherHideRequested, [&] { ++hides; });
    model.setShowAllApps(true);
    model.open(writing, std::nullopt);
    EXPECT_EQ(hides, 1);
    EXPECT_FALSE(model.showAllApps());
    EXPECT_THAT(desk.asked(), ElementsAre("start editor", "start mail", "hide chat", "hide music",
                                          "activate editor"));
    EXPECT_THAT(desk.desktop.asked,
                ElementsAre("link https://a.example/x%20y", "file /home/me/Notes"));
    EXPECT_EQ(desk.notices.back(), (Notice{"Writing workspace", "pencil", 1.8}));

    desk.runningApps.starts("mail");
    desk.runningApps.starts("editor");
    EXPECT_THAT(desk.asked(), ElementsAre("activate editor")) << "as soon as it is there";
    desk.runningApps.observer.launched("editor");
    EXPECT_THAT(desk.asked(), IsEmpty()) << "and only then";

    desk.running("chat").isHidden = true;
    model.closeWorkspace(false);
    EXPECT_THAT(desk.asked(), ElementsAre("unhide chat", "quit editor"))
        << "music was hidden before and stays so";
    EXPECT_EQ(model.workspaces().active(), std::nullopt);
    model.closeWorkspace(false);
    EXPECT_THAT(desk.asked(), IsEmpty());
}

TEST_F(Workspaces, ClosingDoesWithLaunchedAppsWhatTheSettingSays) {
    for (const auto& [choice, expected] :
         std::map<WorkspaceSession::CloseApps, std::vector<std::string>>{
             {WorkspaceSession::CloseApps::quit, {"quit a", "start b"}},
             {WorkspaceSession::CloseApps::hide, {"hide a", "start b"}},
             {WorkspaceSession::CloseApps::keep, {"start b"}}}) {
        WorkspaceDesk fresh;
        AppModel& model = fresh.begin({"a", "b"}, {"b"});
        model.prefs().setCloseApps(choice);
        model.open(fresh.workspace("W", {Item::app("a")}, Workspace::Others::quit), std::nullopt);
        EXPECT_THAT(fresh.asked(), ElementsAre("start a", "quit b", "activate a"));
        fresh.runningApps.quits("b");
        fresh.runningApps.apps.push_back({.bundleID = "a", .pid = 7});
        model.closeWorkspace(true);
        EXPECT_EQ(fresh.asked(), expected);
    }
}

TEST_F(Workspaces, TheNextWorkspaceClosesTheOneBeforeButForWhatBothUse) {
    AppModel& model = desk.begin({"a", "b", "shared", "other"}, {"other"});
    const Workspace first =
        desk.workspace("First", {Item::app("a"), Item::app("shared")}, Workspace::Others::hide);
    const Workspace second =
        desk.workspace("Second", {Item::app("shared"), Item::app("b")}, Workspace::Others::quit);
    model.open(first, std::nullopt);
    desk.runningApps.starts("a");
    desk.runningApps.starts("shared");
    desk.asked();
    model.open(second, std::nullopt);
    EXPECT_THAT(desk.asked(), ElementsAre("unhide other", "quit a", "start shared", "start b",
                                          "quit other", "quit a", "activate shared"));
    EXPECT_EQ(desk.lastNotice(), "Second workspace");
    EXPECT_EQ(desk.notices.size(), 2U) << "closing is not told of";
    EXPECT_EQ(model.session()->launched, std::vector<BundleID>{"b"});
    EXPECT_THAT(model.session()->quit, ElementsAre("other"))
        << "what the first one takes with it does not come back";

    // Opened once more, it only takes the place of its own session.
    model.open(second, 5);
    EXPECT_THAT(desk.asked(),
                ElementsAre("start shared", "start b", "quit other", "quit a", "activate shared"));
    EXPECT_EQ(model.session()->launched, std::vector<BundleID>{"b"});
}

TEST_F(Workspaces, AFocusSessionEndsByItself) {
    AppModel& model = desk.begin({"a"});
    const Workspace workspace = desk.workspace("Deep", {Item::app("a")});
    model.updateWorkspace(workspace);
    model.open(workspace, 1);
    EXPECT_EQ(desk.notices.back(), (Notice{"Deep focus: 1 minutes", "timer", 1.8}));
    desk.runningApps.starts("a");
    desk.asked();
    desk.scheduler.advance(59);
    EXPECT_EQ(model.workspaceCenter().remaining(), 1.0);
    EXPECT_THAT(desk.asked(), IsEmpty());
    desk.scheduler.advance(15);
    EXPECT_THAT(desk.asked(), ElementsAre("quit a"));
    EXPECT_EQ(desk.notices.back(),
              (Notice{"Deep focus session finished", "checkmark.circle.fill", 4.0}));
    EXPECT_THAT(desk.desktop.asked, ElementsAre("sound Glass"));
    EXPECT_FALSE(model.session());
    desk.scheduler.advance(60);
    EXPECT_THAT(desk.desktop.asked, ElementsAre("sound Glass"));

    model.open(workspace, 1);
    model.deleteWorkspace(workspace.id);
    desk.scheduler.advance(60);
    EXPECT_EQ(desk.notices.back().text, "Focus focus session finished");
}

TEST_F(Workspaces, WindowsGetTheirFramesAsTheyCome) {
    AppModel& model = desk.begin({"a", "b"}, {"a"});
    Workspace workspace = desk.workspace("W", {Item::app("a"), Item::app("b")});
    workspace.windows = {{"a", 1, {1, 2, 300, 400}, {}},
                         {"b", 0, {5, 6, 70, 80}, {}},
                         {"a", 0, {9, 9, 90, 90}, {}},
                         {"a", 7, {0, 0, 50, 50}, {}},
                         {"a", -1, {0, 0, 50, 50}, {}}};
    desk.windowPlacer.windowsOf["a"] = {{1, {}, ""}, {2, {}, ""}};
    desk.windowPlacer.stuck = {2};
    model.open(workspace, std::nullopt);
    EXPECT_THAT(desk.windowPlacer.asked, ElementsAre("2 -> 1 2 300 400", "1 -> 9 9 90 90"));
    desk.windowPlacer.asked.clear();

    // b takes three seconds to show a window; the second window of a hangs a while.
    desk.scheduler.advance(2.9);
    EXPECT_THAT(desk.windowPlacer.asked, testing::Each("2 -> 1 2 300 400"));
    desk.windowPlacer.asked.clear();
    desk.windowPlacer.stuck.clear();
    desk.runningApps.apps.push_back({.bundleID = "b", .pid = 9});
    desk.windowPlacer.windowsOf["b"] = {{3, {}, ""}};
    desk.scheduler.advance(0.5);
    EXPECT_THAT(desk.windowPlacer.asked, ElementsAre("2 -> 1 2 300 400", "3 -> 5 6 70 80"));

    desk.scheduler.advance(60);
    EXPECT_EQ(desk.windowPlacer.asked.size(), 2U) << "each window is placed once";
    EXPECT_LE(desk.windowPlacer.readings, 17) << "two looks a second for eight seconds, not more";
    const int readings = desk.windowPlacer.readings;
    desk.scheduler.advance(60);
    EXPECT_EQ(desk.windowPlacer.readings, readings) << "and then it has been given up";
}

TEST_F(Workspaces, AnOpeningThatIsOvertakenPlacesNothingMore) {
    AppModel& model = desk.begin({"a", "b"});
    Workspace first = desk.workspace("First", {Item::app("a")});
    first.windows = {{"a", 0, {1, 2, 300, 400}, {}}};
    model.open(first, std::nullopt);
    model.closeWorkspace(true);
    desk.runningApps.starts("a");
    desk.windowPlacer.windowsOf["a"] = {{1, {}, ""}};
    desk.asked();
    desk.scheduler.advance(10);
    EXPECT_THAT(desk.windowPlacer.asked, IsEmpty());
    EXPECT_THAT(desk.asked(), IsEmpty());
}

TEST_F(Workspaces, WithoutPermissionWindowsStayAndTheRestWorks) {
    desk.windowPlacer.trusted = false;
    AppModel& model = desk.begin({"a"});
    Workspace workspace = desk.workspace("W", {Item::app("a")});
    workspace.windows = {{"a", 0, {1, 2, 300, 400}, {}}};
    model.open(workspace, std::nullopt);
    EXPECT_THAT(desk.asked(), ElementsAre("start a", "activate a"));
    EXPECT_EQ(desk.notices.front(),
              (Notice{"Allow vellory in Accessibility to restore window positions",
                      "macwindow.badge.plus", 4.0}));
    EXPECT_THAT(desk.windowPlacer.trustAsked, ElementsAre(false, false, true))
        << "the prompt comes last";
    EXPECT_THAT(desk.windowPlacer.asked, IsEmpty());
    EXPECT_THAT(model.workspaceCenter().captureWindows(workspace), IsEmpty());
}

TEST_F(Workspaces, CapturedFramesAreThoseOfRealWindowsWithTheirDisplay) {
    AppModel& model = desk.begin({"a", "b"}, {"b", "a"});
    desk.displays.connected = {{"Left", {0, 0, 1000, 800}}, {"Right", {1000, 0, 1000, 800}}};
    desk.windowPlacer.windowsOf["a"] = {{1, Workspace::Rect{10, 20, 30, 500}, ""},
                                        {2, std::nullopt, ""},
                                        {3, Workspace::Rect{1200, 20, 41, 41}, ""},
                                        {4, Workspace::Rect{900, -50, 200, 100}, ""},
                                        {5, Workspace::Rect{0, 0, std::nan(""), 100}, ""}};
    desk.windowPlacer.windowsOf["b"] = {{6, Workspace::Rect{-900, 0, 200, 100}, ""}};
    const Workspace workspace =
        desk.workspace("W", {Item::app("a"), Item::app("absent"), Item::app("b"), Item::app("a")});
    EXPECT_THAT(model.workspaceCenter().captureWindows(workspace),
                ElementsAre(Workspace::WindowSlot{"a", 2, {1200, 20, 41, 41}, "Right"},
                            Workspace::WindowSlot{"a", 3, {900, -50, 200, 100}, "Left"},
                            Workspace::WindowSlot{"b", 0, {-900, 0, 200, 100}, std::nullopt}));
    EXPECT_EQ(desk.windowPlacer.readings, 1) << "all apps are read together";
}

TEST_F(Workspaces, ManyItemsAreOpenedInSlices) {
    std::vector<Item> items;
    for (int i = 0; i < 10'000; ++i) {
        items.push_back(Item::file("/f" + std::to_string(i)));
    }
    AppModel& model = desk.begin({"a", "b"}, {"b"});
    items.push_back(Item::app("a"));
    model.open(desk.workspace("Huge", items, Workspace::Others::hide), std::nullopt);
    EXPECT_EQ(desk.desktop.asked.size(), WorkspaceRunner::itemsAtOnce);
    EXPECT_THAT(desk.asked(), IsEmpty()) << "the others are set aside when all is open";
    desk.scheduler.advance(0.1);
    EXPECT_EQ(desk.desktop.asked.size(), 10'000U);
    EXPECT_THAT(desk.asked(), ElementsAre("start a", "hide b", "activate a"));
}

TEST_F(Workspaces, OneIsMadeOfWhatIsOpen) {
    AppModel& model =
        desk.begin({"mail", "web"}, {"web", "org.files", "com.quorvel.vellory", "mail"});
    desk.runningApps.apps.push_back({.bundleID = "daemon", .pid = 5, .isRegular = false});
    desk.desktop.folders = {"/home/me/Notes"};
    desk.desktop.tabs = {"https://a.example", "about:blank", "https://a.example"};
    desk.windowPlacer.windowsOf["web"] = {{1, Workspace::Rect{1, 2, 300, 400}, ""}};
    desk.clock.time = Date::since1970(1'795'271'160); // 2026-11-21 14:26 UTC
    std::vector<Workspace> made;
    const auto keep = [&](const Workspace& workspace) { made.push_back(workspace); };

    model.snapshotWorkspace({}, keep);
    ASSERT_EQ(made.size(), 1U) << "at once when nobody is to be asked";
    EXPECT_EQ(made[0].name, "Snapshot Nov 21, 2026, 2:26\u202FPM");
    EXPECT_THAT(made[0].items, ElementsAre(Item::app("web"), Item::app("mail")));
    EXPECT_THAT(made[0].windows, IsEmpty());

    model.snapshotWorkspace({.windows = true, .finder = true, .tabs = true}, keep);
    EXPECT_EQ(made.size(), 1U);
    desk.scheduler.runBackground();
    desk.scheduler.deliver();
    ASSERT_EQ(made.size(), 2U);
    EXPECT_THAT(made[1].items,
                ElementsAre(Item::app("web"), Item::app("mail"), Item::file("/home/me/Notes"),
                            Item::url("https://a.example")));
    EXPECT_THAT(made[1].windows,
                ElementsAre(Workspace::WindowSlot{"web", 0, {1, 2, 300, 400}, "Built-in Display"}));
    EXPECT_EQ(Workspace::load(desk.paths().workspaces()), made);
}

} // namespace
} // namespace vellory::test
