// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <csignal>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LauncherOnDesktop.h"
#include "WindowView.h"
#include "platform/linux/windows/LinuxWindowPlacer.h"

namespace vellory {

static void PrintTo(const Workspace::Rect& rect, std::ostream* out) {
    *out << rect.width << "x" << rect.height << " at " << rect.x << "," << rect.y;
}

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Rect = Workspace::Rect;

constexpr const char* vertically = "_NET_WM_STATE_MAXIMIZED_VERT";
constexpr const char* horizontally = "_NET_WM_STATE_MAXIMIZED_HORZ";
constexpr const char* fullScreen = "_NET_WM_STATE_FULLSCREEN";
constexpr const char* shaded = "_NET_WM_STATE_SHADED";

class WindowPlacerTest : public LauncherOnDesktop {
  protected:
    /// An app of the session with `count` windows, all of them there.
    void show(const std::string& id, const std::string& options = "", std::size_t count = 1) {
        if (apps == nullptr) {
            begin();
        }
        const std::size_t before = view.listed().size();
        std::vector<std::string> command{VELLORY_WINDOW_APP, "--class", id, "--windows",
                                         std::to_string(count)};
        for (std::size_t at = 0; at < options.size();) {
            const std::size_t end = std::min(options.find(' ', at), options.size());
            command.push_back(options.substr(at, end - at));
            at = end + 1;
        }
        pids[id] = session.run(command);
        ASSERT_TRUE(
            loop.runUntil([&] { return running(id) && view.listed().size() == before + count; }));
        ASSERT_TRUE(view.settle());
        if (placer == nullptr) {
            placer = std::make_unique<LinuxWindowPlacer>(session.environment(), *apps);
        }
    }

    std::vector<WindowPlacer::Window> windows(const std::string& id) {
        return placer->windows({{.bundleID = id}}).front();
    }

    /// What people see: the outermost window, without the shadow that the app draws itself.
    Rect seen(WindowPlacer::WindowID window, double shadow = 0) {
        const Rect outer = view.outerFrame(static_cast<xcb_window_t>(window));
        return {outer.x + shadow, outer.y + shadow, outer.width - 2 * shadow,
                outer.height - 2 * shadow};
    }

    /// Until the window manager has done what the placer asked.
    void wait() {
        placer->isTrusted(false); // The server has what was sent once it answers this.
        ASSERT_TRUE(view.settle());
    }

    /// Asks until the frame is set, as the launcher does every half second.
    int callsUntilSet(WindowPlacer::WindowID window, const Rect& frame) {
        for (int calls = 1; calls < 10; ++calls) {
            const bool isSet = placer->setFrame(window, frame);
            wait();
            if (isSet) {
                return calls;
            }
        }
        return 10;
    }

    std::vector<std::string> states(WindowPlacer::WindowID window) {
        return view.states(static_cast<xcb_window_t>(window));
    }

    WindowView view{session, loop};
    std::unique_ptr<LinuxWindowPlacer> placer;
    std::map<std::string, pid_t> pids;
};

struct Kind {
    const char* name;
    const char* options;
    double shadow;
    bool hasTitleBar; ///< of the window manager's
};
const std::vector<Kind> kinds{{"decorated", "", 0, true},
                              {"undecorated", "--undecorated", 0, false},
                              {"own decorations", "--shadow 24", 24, false},
                              {"in steps", "--increments", 0, true}};

TEST_F(WindowPlacerTest, FrameIsTheVisibleOuterEdgeAndIsSetExactly) {
    session.addApp("kind", "--class kind");
    for (const Kind& kind : kinds) {
        show("kind", kind.options);
        const auto window = windows("kind").back();
        ASSERT_TRUE(window.frame) << kind.name;
        EXPECT_EQ(*window.frame, seen(window.id, kind.shadow)) << kind.name;
        EXPECT_EQ(window.title, "Test window 1");

        // Captured and placed: nothing moves, however often.
        for (int round = 0; round < 3; ++round) {
            EXPECT_EQ(callsUntilSet(window.id, *window.frame), 1) << kind.name;
            EXPECT_EQ(seen(window.id, kind.shadow), *window.frame) << kind.name;
        }
        const Rect wanted{300, 200, 500, 400};
        EXPECT_EQ(callsUntilSet(window.id, wanted), 1) << kind.name;
        const Rect got = seen(window.id, kind.shadow);
        EXPECT_EQ(got.x, wanted.x) << kind.name;
        EXPECT_EQ(got.y, wanted.y) << kind.name;
        if (std::string(kind.name) == "in steps") {
            EXPECT_LE(wanted.width - got.width, 7);
            EXPECT_LE(wanted.height - got.height, 13);
        } else {
            EXPECT_EQ(got, wanted) << kind.name;
        }
        EXPECT_EQ(windows("kind").back().frame, got) << kind.name;
    }
}

TEST_F(WindowPlacerTest, WindowThatFillsTheScreenIsRestoredFirst) {
    session.addApp("kind", "--class kind");
    const Rect wanted{200, 100, 640, 480};
    for (const Kind& kind : kinds) {
        show("kind", kind.options);
        const auto window = windows("kind").back();
        const auto id = static_cast<xcb_window_t>(window.id);
        for (const std::vector<std::string>& set :
             std::vector<std::vector<std::string>>{{vertically, horizontally},
                                                   {vertically},
                                                   {fullScreen},
                                                   {shaded},
                                                   {vertically, horizontally, fullScreen}}) {
            if (set.front() == shaded && !kind.hasTitleBar) {
                continue;
            }
            ASSERT_TRUE(
                view.setStates(id, {set.begin(), set.begin() + std::min(set.size(), 2UZ)}, true))
                << kind.name << ' ' << set.front();
            ASSERT_TRUE(set.size() < 3 || view.setStates(id, {set.back()}, true)) << kind.name;
            // One call to restore it, one to give it the frame; openbox takes a window that was
            // maximized and then filled the screen out of these states one after the other.
            const int calls = callsUntilSet(window.id, wanted);
            EXPECT_GE(calls, 2) << kind.name << ' ' << set.front();
            EXPECT_LE(calls, 3) << kind.name << ' ' << set.front();
            EXPECT_THAT(states(window.id), IsEmpty()) << kind.name;
            const Rect got = seen(window.id, kind.shadow);
            EXPECT_EQ(got.x, wanted.x) << kind.name << ' ' << set.front();
            EXPECT_EQ(got.y, wanted.y) << kind.name << ' ' << set.front();
            EXPECT_NEAR(got.width, wanted.width, 7) << kind.name << ' ' << set.front();
            EXPECT_NEAR(got.height, wanted.height, 13) << kind.name << ' ' << set.front();
        }
    }
}

TEST_F(WindowPlacerTest, WindowThatFillsTheScreenAlreadyAsWantedIsLeftAlone) {
    session.addApp("kind", "--class kind");
    show("kind");
    const auto id = static_cast<xcb_window_t>(windows("kind").front().id);
    const Rect before = seen(id);
    ASSERT_TRUE(view.setStates(id, {vertically, horizontally}, true));
    const Rect filled = *windows("kind").front().frame;
    EXPECT_EQ(filled, seen(id));
    EXPECT_EQ(callsUntilSet(id, filled), 1);
    EXPECT_EQ(seen(id), filled);
    EXPECT_THAT(states(id), ElementsAre(horizontally, vertically));
    // Captured filled, placed on the window as it was before.
    ASSERT_TRUE(view.setStates(id, {vertically, horizontally}, false));
    ASSERT_EQ(seen(id), before);
    EXPECT_EQ(callsUntilSet(id, filled), 1);
    EXPECT_EQ(seen(id), filled);
}

TEST_F(WindowPlacerTest, IconifiedWindowStaysSoAndGetsItsFrame) {
    session.addApp("kind", "--class kind");
    show("kind");
    const auto id = static_cast<xcb_window_t>(windows("kind").front().id);
    const Rect before = seen(id);
    ASSERT_TRUE(view.iconify(id));
    EXPECT_EQ(windows("kind").front().frame, before);
    const Rect wanted{400, 300, 333, 222};
    EXPECT_EQ(callsUntilSet(id, wanted), 1);
    EXPECT_THAT(states(id), ElementsAre("iconic"));
    EXPECT_EQ(windows("kind").front().frame, wanted);
    ASSERT_TRUE(apps->activate("kind"));
    ASSERT_TRUE(loop.runUntil([&] { return !running("kind")->isHidden; }));
    ASSERT_TRUE(view.settle());
    EXPECT_EQ(seen(id), wanted);
}

TEST_F(WindowPlacerTest, WindowsComeInTheOrderOfTheirCreationAndEachFindsItsFrame) {
    session.addApp("many", "--class many");
    session.addApp("other", "--class other");
    show("many", "", 3);
    show("other");
    show("many", "", 2); // A second process of the same app.
    const auto ids = [&] {
        std::vector<WindowPlacer::WindowID> out;
        std::ranges::transform(windows("many"), std::back_inserter(out), &WindowPlacer::Window::id);
        return out;
    };
    const auto order = ids();
    ASSERT_THAT(order, SizeIs(5));
    const auto listed = view.listed();
    EXPECT_THAT(order, ElementsAre(listed[0], listed[1], listed[2], listed[4], listed[5]));
    EXPECT_EQ(windows("many")[2].title, "Test window 3");
    EXPECT_EQ(windows("many")[3].title, "Test window 1");
    // Neither the stack, nor hiding, nor moving changes it.
    EXPECT_TRUE(placer->raise(order[0]));
    ASSERT_TRUE(view.iconify(static_cast<xcb_window_t>(order[1])));
    ASSERT_TRUE(apps->unhide("many"));
    for (std::size_t i = 0; i < order.size(); ++i) {
        const double at = 50.0 * static_cast<double>(i + 1);
        EXPECT_TRUE(placer->setFrame(order[i], {at, at, 300, 200 + at}));
    }
    wait();
    EXPECT_EQ(ids(), order);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const double at = 50.0 * static_cast<double>(i + 1);
        EXPECT_EQ(seen(order[i]), (Rect{at, at, 300, 200 + at})) << i;
    }
    const auto both =
        placer->windows({{.bundleID = "other"}, {.bundleID = "none"}, {.bundleID = "many"}});
    EXPECT_THAT(both, ElementsAre(SizeIs(1), IsEmpty(), SizeIs(5)));
}

TEST_F(WindowPlacerTest, DialogsOfOtherWindowsHaveNoNumber) {
    session.addApp("kind", "--class kind");
    show("kind", "--dialog", 3);
    const auto all = windows("kind");
    ASSERT_THAT(all, SizeIs(2));
    EXPECT_EQ(all[0].title, "Test window 1");
    EXPECT_EQ(all[1].title, "Test window 3");
}

TEST_F(WindowPlacerTest, AppThatHangsHoldsUpNobody) {
    session.addApp("hung", "--class hung");
    session.addApp("well", "--class well");
    show("hung");
    show("well");
    kill(pids["hung"], SIGSTOP);
    const auto hung = windows("hung").front().id;
    const auto well = windows("well").front().id;
    const Rect wanted{111, 222, 333, 444};
    EXPECT_EQ(callsUntilSet(hung, wanted), 1);
    EXPECT_EQ(callsUntilSet(well, wanted), 1);
    EXPECT_EQ(seen(hung), wanted);
    EXPECT_EQ(seen(well), wanted);
    kill(pids["hung"], SIGKILL);
}

TEST_F(WindowPlacerTest, WindowThatIsGoneIsRefused) {
    session.addApp("kind", "--class kind");
    show("kind");
    const auto id = windows("kind").front().id;
    ASSERT_TRUE(apps->quit("kind"));
    ASSERT_TRUE(loop.runUntil([&] { return !running("kind"); }));
    EXPECT_THAT(windows("kind"), IsEmpty());
    EXPECT_FALSE(placer->setFrame(id, {0, 0, 100, 100}));
    EXPECT_FALSE(placer->raise(id));
    EXPECT_FALSE(placer->setFrame(std::numeric_limits<std::uint64_t>::max(), {0, 0, 100, 100}));
}

TEST_F(WindowPlacerTest, AbsurdFramesAreRefusedOrBounded) {
    session.addApp("kind", "--class kind");
    show("kind");
    const auto id = windows("kind").front().id;
    const Rect before = seen(id);
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const Rect& frame : {Rect{nan, 0, 100, 100}, Rect{0, nan, 100, 100}, Rect{0, 0, nan, 100},
                              Rect{0, 0, 100, infinite}, Rect{-infinite, 0, 100, 100},
                              Rect{0, 0, 0, 100}, Rect{0, 0, 100, -1}}) {
        EXPECT_FALSE(placer->setFrame(id, frame));
    }
    wait();
    EXPECT_EQ(seen(id), before);
    for (const Rect& frame : {Rect{1e300, -1e300, 200, 100}, Rect{-1e9, 1e9, 200, 100},
                              Rect{5000, 5000, 200, 100}, Rect{10, 10, 0.001, 0.001}}) {
        EXPECT_EQ(callsUntilSet(id, frame), 1);
        const Rect got = seen(id);
        EXPECT_LE(got.width, 200) << got.width;
        EXPECT_LE(got.height, 100);
        EXPECT_EQ(callsUntilSet(id, before), 1);
        EXPECT_EQ(seen(id), before);
    }
}

TEST_F(WindowPlacerTest, RaisedWindowStandsOnTop) {
    session.addApp("kind", "--class kind");
    show("kind", "", 2);
    const auto all = windows("kind");
    for (const auto& window : {all[0], all[1], all[0]}) {
        EXPECT_TRUE(placer->raise(window.id));
        wait();
        EXPECT_EQ(view.stacked().back(), window.id);
    }
}

TEST_F(WindowPlacerTest, TrustNeedsAWindowManagerThatAnswersOnX11) {
    session.addApp("kind", "--class kind");
    show("kind");
    EXPECT_TRUE(placer->isTrusted(true));
    const auto id = windows("kind").front().id;
    SessionEnvironment wayland = session.environment();
    wayland.variables.insert(wayland.variables.begin(), "WAYLAND_DISPLAY=wayland-0");
    EXPECT_FALSE(LinuxWindowPlacer(wayland, *apps).isTrusted(false));
    session.stopWindowManager();
    EXPECT_FALSE(placer->isTrusted(false));
    EXPECT_THAT(windows("kind"), IsEmpty());
    EXPECT_FALSE(placer->setFrame(id, {0, 0, 100, 100}));
    session.stopServer();
    EXPECT_FALSE(placer->isTrusted(false));
    EXPECT_THAT(windows("kind"), IsEmpty());
}

} // namespace
} // namespace test
} // namespace vellory
