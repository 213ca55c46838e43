// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <csignal>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LauncherOnDesktop.h"
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
    void show(const std::string& id, const std::vector<std::string>& options = {},
              std::size_t count = 1) {
        if (apps == nullptr) {
            for (const char* known : {"kind", "other"}) {
                session.addApp(known, std::string("--class ") + known);
            }
            begin();
            placer = std::make_unique<LinuxWindowPlacer>(session.environment(), *apps);
        }
        const std::size_t before = view.listed().size();
        std::vector<std::string> command{VELLORY_WINDOW_APP, "--class", id, "--windows",
                                         std::to_string(count)};
        command.insert(command.end(), options.begin(), options.end());
        pids[id] = session.run(command);
        ASSERT_TRUE(becomesRunning(id) && windowsBecome(before + count));
        ASSERT_TRUE(view.settle());
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

    std::unique_ptr<LinuxWindowPlacer> placer;
    std::map<std::string, pid_t> pids;
};

struct Kind {
    const char* name;
    std::vector<std::string> options;
    double shadow;
    bool hasTitleBar; ///< of the window manager's
};
const std::vector<Kind> kinds{{"decorated", {}, 0, true},
                              {"undecorated", {"--undecorated"}, 0, false},
                              {"own decorations", {"--shadow", "24"}, 24, false},
                              {"in steps", {"--increments"}, 0, true}};

/// At its place, and less than a step smaller than wanted.
bool isNear(const Rect& got, const Rect& wanted) {
    return got.x == wanted.x && got.y == wanted.y && got.width <= wanted.width &&
           got.width >= wanted.width - 7 && got.height <= wanted.height &&
           got.height >= wanted.height - 13;
}

TEST_F(WindowPlacerTest, FrameIsTheVisibleOuterEdgeAndIsSetExactly) {
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        show("kind", kind.options);
        const auto window = windows("kind").back();
        ASSERT_TRUE(window.frame);
        EXPECT_EQ(*window.frame, seen(window.id, kind.shadow));
        EXPECT_EQ(window.title, "Test window 1");

        // Captured and placed: nothing moves, however often.
        for (int round = 0; round < 3; ++round) {
            EXPECT_EQ(callsUntilSet(window.id, *window.frame), 1);
            EXPECT_EQ(seen(window.id, kind.shadow), *window.frame);
        }
        const Rect wanted{300, 200, 500, 400};
        EXPECT_EQ(callsUntilSet(window.id, wanted), 1);
        const Rect got = seen(window.id, kind.shadow);
        EXPECT_TRUE(std::string(kind.name) == "in steps" ? isNear(got, wanted) : got == wanted)
            << testing::PrintToString(got);
        EXPECT_EQ(windows("kind").back().frame, got);
    }
}

TEST_F(WindowPlacerTest, WindowThatFillsTheScreenIsRestoredFirst) {
    const Rect wanted{200, 100, 640, 480};
    for (const Kind& kind : kinds) {
        show("kind", kind.options);
        const auto window = windows("kind").back();
        const auto id = static_cast<xcb_window_t>(window.id);
        for (const std::vector<std::vector<std::string>>& set :
             std::vector<std::vector<std::vector<std::string>>>{
                 {{vertically, horizontally}},
                 {{vertically}},
                 {{fullScreen}},
                 {{shaded}},
                 {{vertically, horizontally}, {fullScreen}}}) {
            const std::string& first = set.front().front();
            SCOPED_TRACE(std::string(kind.name) + ' ' + first);
            if (first == shaded && !kind.hasTitleBar) {
                continue;
            }
            for (const auto& states : set) {
                ASSERT_TRUE(view.setStates(id, states, true));
            }
            // One call to restore it, one to give it the frame; openbox takes a window that was
            // maximized and then filled the screen out of these states one after the other.
            const int calls = callsUntilSet(window.id, wanted);
            EXPECT_GE(calls, 2);
            EXPECT_LE(calls, 3);
            EXPECT_THAT(states(window.id), IsEmpty());
            const Rect got = seen(window.id, kind.shadow);
            EXPECT_TRUE(isNear(got, wanted)) << testing::PrintToString(got);
        }
    }
}

TEST_F(WindowPlacerTest, WindowThatFillsTheScreenAlreadyAsWantedIsLeftAlone) {
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

TEST_F(WindowPlacerTest, WindowsComeInTheOrderOfTheirCreationWithoutDialogs) {
    show("kind", {"--dialog"}, 3);
    show("other");
    show("kind", {}, 2); // A second process of the same app.
    const auto ids = [&] {
        std::vector<WindowPlacer::WindowID> out;
        std::ranges::transform(windows("kind"), std::back_inserter(out), &WindowPlacer::Window::id);
        return out;
    };
    const auto order = ids();
    const auto listed = view.listed();
    ASSERT_THAT(order, ElementsAre(listed[0], listed[2], listed[4], listed[5]));
    EXPECT_EQ(windows("kind")[1].title, "Test window 3");
    EXPECT_EQ(windows("kind")[2].title, "Test window 1");
    // Neither the stack, nor hiding, nor moving changes it.
    for (const auto window : {order[2], order[3], order[2]}) {
        EXPECT_TRUE(placer->raise(window));
        wait();
        EXPECT_EQ(view.stacked().back(), window);
    }
    ASSERT_TRUE(view.iconify(static_cast<xcb_window_t>(order[1])));
    ASSERT_TRUE(apps->unhide("kind"));
    const auto frameOf = [](std::size_t i) {
        const double at = 50.0 * static_cast<double>(i + 1);
        return Rect{at, at, 300, 200 + at};
    };
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_TRUE(placer->setFrame(order[i], frameOf(i)));
    }
    wait();
    EXPECT_EQ(ids(), order);
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_EQ(seen(order[i]), frameOf(i)) << i;
    }
    const auto both =
        placer->windows({{.bundleID = "other"}, {.bundleID = "none"}, {.bundleID = "kind"}});
    EXPECT_THAT(both, ElementsAre(SizeIs(1), IsEmpty(), SizeIs(4)));
}

TEST_F(WindowPlacerTest, AppThatHangsHoldsUpNobodyAndWhatIsGoneIsRefused) {
    show("kind");
    show("other");
    kill(pids["kind"], SIGSTOP);
    const auto hung = windows("kind").front().id;
    const auto well = windows("other").front().id;
    const Rect wanted{111, 222, 333, 444};
    for (const auto window : {hung, well}) {
        EXPECT_EQ(callsUntilSet(window, wanted), 1);
        EXPECT_EQ(seen(window), wanted);
    }
    kill(pids["kind"], SIGKILL);
    ASSERT_TRUE(loop.runUntil([&] { return !running("kind"); }));
    EXPECT_THAT(windows("kind"), IsEmpty());
    EXPECT_FALSE(placer->setFrame(hung, wanted));
    EXPECT_FALSE(placer->raise(hung));
    EXPECT_FALSE(placer->setFrame(std::numeric_limits<std::uint64_t>::max(), wanted));
}

TEST_F(WindowPlacerTest, TrustNeedsAWindowManagerThatAnswersOnX11) {
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
