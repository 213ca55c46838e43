// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LauncherOnDesktop.h"
#include "model/WorkspaceRunner.h"
#include "platform/linux/windows/LinuxWindowPlacer.h"
#include "support/FakePorts.h"

// Whole desks of real windows: opened, looked at from outside, and put back.

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Item = Workspace::Item;
using Rect = Workspace::Rect;

class WorkspaceDeskTest : public LauncherOnDesktop {
  protected:
    void makeDesk() {
        begin();
        placer = std::make_unique<LinuxWindowPlacer>(session.environment(), *apps);
        runner = std::make_unique<WorkspaceRunner>(WorkspaceRunner::Parts{
            .runningApps = *apps,
            .windowPlacer = *placer,
            .desktop = desktop,
            .displays = displays,
            .clock = clock,
            .scheduler = loop,
            .locate = [this](const BundleID& id) { return std::optional(app(id)); },
            .notices = posted});
        QObject::connect(&posted, &Notices::posted,
                         [this](const Notice& notice) { notices.push_back(notice.text); });
        apps->observe({.launched = [this](const BundleID& id) { runner->appLaunched(id); }});
    }
    void addWindowApp(const std::string& id, const std::string& options = "") {
        session.addApp(id, "--class " + id + " " + options, "StartupWMClass=" + id);
    }
    /// As an app that somebody else has started.
    bool runs(const std::string& id) {
        session.run({VELLORY_WINDOW_APP, "--class", id});
        return becomesRunning(id);
    }

    WorkspaceSession open(const Workspace& workspace, const std::set<BundleID>& leaving = {}) {
        std::vector<BundleID> ids;
        std::set<BundleID> hidden;
        for (const RunningApp& app : runner->regularApps()) {
            if (leaving.contains(app.bundleID)) {
                continue;
            }
            ids.push_back(app.bundleID);
            if (app.isHidden) {
                hidden.insert(app.bundleID);
            }
        }
        const auto begun = WorkspaceSession::begin(workspace, ids, hidden, {}, clock.now(), {});
        runner->open(workspace, {});
        return begun;
    }
    std::set<BundleID> close(const WorkspaceSession& opened, const std::set<BundleID>& keep = {}) {
        return runner->close(opened.closePlan(WorkspaceSession::CloseApps::quit), keep);
    }

    std::vector<std::string> runningNow() const {
        std::vector<std::string> ids;
        for (const RunningApp& app : apps->list()) {
            ids.push_back(app.isHidden ? "(" + app.bundleID + ")" : app.bundleID);
        }
        return ids;
    }
    /// Waits until these apps run, the hidden ones in parentheses.
    testing::AssertionResult becomes(std::vector<std::string> wanted) {
        std::ranges::sort(wanted);
        std::vector<std::string> now;
        const bool came = loop.runUntil([&] {
            now = runningNow();
            std::ranges::sort(now);
            return now == wanted;
        });
        return (came ? testing::AssertionSuccess() : testing::AssertionFailure())
               << "running: " << testing::PrintToString(now);
    }

    static Workspace workspace(std::vector<BundleID> ids, Workspace::Others others) {
        Workspace made;
        made.id = Uuid::random();
        made.name = "W";
        std::ranges::transform(ids, std::back_inserter(made.items), Item::app);
        made.others = others;
        return made;
    }

    FakeDesktop desktop;
    FakeDisplays displays;
    FakeClock clock;
    std::unique_ptr<LinuxWindowPlacer> placer;
    std::unique_ptr<WorkspaceRunner> runner;
    std::vector<std::string> notices;
    Notices posted;
};

TEST_F(WorkspaceDeskTest, TheNextWorkspaceTakesOverAndClosingPutsTheDeskBack) {
    for (const char* id : {"alone", "shared", "fresh", "other", "asleep"}) {
        addWindowApp(id);
    }
    makeDesk();
    ASSERT_TRUE(runs("other") && runs("asleep"));
    ASSERT_TRUE(apps->hide("asleep"));
    ASSERT_TRUE(becomes({"other", "(asleep)"}));

    const WorkspaceSession first = open(workspace({"alone", "shared"}, Workspace::Others::hide));
    ASSERT_TRUE(becomes({"alone", "shared", "(other)", "(asleep)"}));
    EXPECT_THAT(first.hidden, ElementsAre("other")) << "the sleeping one was hidden before";

    const auto leaving = close(first, {"shared", "fresh"});
    const WorkspaceSession second =
        open(workspace({"shared", "fresh"}, Workspace::Others::quit), leaving);
    ASSERT_TRUE(becomes({"shared", "fresh"}));
    EXPECT_THAT(second.launched, ElementsAre("fresh"));
    EXPECT_EQ(view.listed().size(), 2U) << "no second window of what ran already";
    ASSERT_TRUE(loop.runUntil([&] {
        return view.active() == placer->windows({*running("shared")})[0][0].id;
    })) << "the first app is in front";

    close(second);
    EXPECT_TRUE(becomes({"shared", "other", "asleep"})) << "what was quit is back";
}

TEST_F(WorkspaceDeskTest, WindowsComeBackToTheirPlacesInTheOrderTheyWereMade) {
    addWindowApp("pair", "--windows 2");
    addWindowApp("bare", "--undecorated");
    addWindowApp("there");
    makeDesk();
    ASSERT_TRUE(runs("there"));
    Workspace desk = workspace({"there", "pair", "bare"}, Workspace::Others::keep);
    desk.windows = {{"pair", 1, {500, 400, 320, 240}, {}},
                    {"pair", 0, {40, 60, 300, 200}, {}},
                    {"bare", 0, {700, 80, 260, 180}, {}},
                    {"there", 0, {420, 30, 250, 190}, {}}};
    open(desk);
    ASSERT_TRUE(becomes({"there", "pair", "bare"}));
    ASSERT_TRUE(loop.runUntil([&] { return runner->pendingSlots().empty(); }));
    const auto asSaved = testing::UnorderedElementsAreArray(desk.windows);
    const auto captured = [&] {
        auto slots = runner->captureWindows(desk);
        for (auto& slot : slots) {
            slot.screenName.reset();
        }
        return slots;
    };
    ASSERT_TRUE(loop.runUntil([&] { return testing::Value(captured(), asSaved); }));
    const auto pair = placer->windows({*running("pair")})[0];
    EXPECT_EQ(view.outerFrame(static_cast<xcb_window_t>(pair[1].id)), desk.windows[0].frame)
        << "as somebody else sees it";

    // Once more changes nothing, and neither does opening the workspace again.
    open(desk);
    ASSERT_TRUE(loop.runUntil([&] { return runner->pendingSlots().empty(); }));
    ASSERT_TRUE(view.settle());
    EXPECT_THAT(captured(), asSaved);
    EXPECT_EQ(view.listed().size(), 4U);
}

TEST_F(WorkspaceDeskTest, ALateWindowIsPlacedAndAWindowlessAppHoldsUpNothing) {
    const std::string gate = session.addGate("gate");
    addWindowApp("late", "--gate " + gate);
    addWindowApp("never", "--gate " + session.addGate("shut"));
    addWindowApp("quick");
    makeDesk();
    Workspace desk = workspace({"never", "late", "quick"}, Workspace::Others::keep);
    desk.windows = {{"never", 0, {1, 1, 200, 200}, {}},
                    {"late", 0, {300, 100, 320, 240}, {}},
                    {"quick", 0, {40, 60, 300, 200}, {}}};
    open(desk);
    ASSERT_TRUE(becomes({"quick"}));
    ASSERT_TRUE(loop.runUntil([&] { return runner->pendingSlots().size() == 2; }));

    session.openGate(gate);
    ASSERT_TRUE(becomesRunning("late"));
    ASSERT_TRUE(loop.runUntil([&] { return runner->pendingSlots().size() == 1; }));
    const auto late = static_cast<xcb_window_t>(placer->windows({*running("late")})[0][0].id);
    EXPECT_TRUE(loop.runUntil([&] { return view.outerFrame(late) == desk.windows[1].frame; }));

    clock.time = clock.time + WorkspaceRunner::patience + 1;
    EXPECT_TRUE(loop.runUntil([&] { return runner->pendingSlots().empty(); })) << "given up";
}

TEST_F(WorkspaceDeskTest, AnAppThatRefusesToCloseStaysAndTheRestIsDone) {
    addWindowApp("stubborn", "--stubborn");
    addWindowApp("meek");
    addWindowApp("wanted");
    makeDesk();
    session.run({VELLORY_WINDOW_APP, "--class", "stubborn", "--stubborn"});
    ASSERT_TRUE(becomesRunning("stubborn") && runs("meek"));
    const WorkspaceSession opened = open(workspace({"wanted"}, Workspace::Others::quit));
    ASSERT_TRUE(becomes({"wanted", "stubborn"}));
    close(opened);
    EXPECT_TRUE(becomes({"stubborn", "meek"}));
    EXPECT_EQ(view.listed().size(), 2U) << "it was not started a second time";
}

TEST_F(WorkspaceDeskTest, WithoutAWindowManagerTheRestStillOpens) {
    addWindowApp("app", "--report " + session.reportFile("app").string());
    makeDesk();
    session.stopWindowManager();
    ASSERT_TRUE(loop.runUntil([&] { return !placer->isTrusted(false); }));
    Workspace desk = workspace({"app"}, Workspace::Others::hide);
    desk.windows = {{"app", 0, {1, 1, 200, 200}, {}}};
    open(desk);
    EXPECT_THAT(notices, ElementsAre("Allow vellory in Accessibility to restore window positions",
                                     "W workspace"));
    EXPECT_THAT(runner->captureWindows(desk), IsEmpty());
    EXPECT_TRUE(loop.runUntil([&] { return std::filesystem::exists(session.reportFile("app")); }));
}

} // namespace
} // namespace vellory::test
