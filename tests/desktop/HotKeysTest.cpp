// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/xcb_keysyms.h>

#include "DesktopSession.h"
#include "MainLoop.h"
#include "platform/linux/windows/LinuxHotKeys.h"
#include "platform/linux/windows/X11Connection.h"
#include "support/Child.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HotKeysTest : public testing::Test {
  protected:
    HotKeysTest() {
        keys->observe([this](const std::string& name) { pressed.push_back(name); });
    }

    /// Types on the server's keyboard, as a person would.
    void type(const std::vector<std::string>& chords) {
        std::vector<std::string> command{"xdotool", "key", "--delay", "0"};
        command.insert(command.end(), chords.begin(), chords.end());
        ASSERT_EQ(endOf(session.run(command)), 0);
    }
    /// Everything typed so far has been told once this has.
    bool finish() {
        type({"Pause"});
        return loop.runUntil([&] { return !pressed.empty() && pressed.back() == "end"; });
    }

    DesktopSession session;
    MainLoop loop;
    std::vector<std::string> pressed;
    std::unique_ptr<LinuxHotKeys> keys =
        std::make_unique<LinuxHotKeys>(session.environment(), loop);
    std::unique_ptr<X11Connection> other =
        X11Connection::open(session.environment().value("DISPLAY"));
};

TEST_F(HotKeysTest, ShortcutsWorkWhateverLockIsOnAndNothingElseIsTaken) {
    EXPECT_THAT(keys->set({{"work", "Ctrl+Alt+W"},
                           {"free", "Meta+Space"},
                           {"function", "F9"},
                           {"shifted", "Ctrl+!"},
                           {"end", "Pause"}}),
                IsEmpty());
    type({"ctrl+alt+w", "w", "alt+w", "ctrl+alt+shift+w", "super+space", "F9", "shift+F9",
          "ctrl+shift+1"});
    for (const char* lock : {"Caps_Lock", "Num_Lock", "Scroll_Lock"}) {
        type({lock, "ctrl+alt+w"}); // Left on: the last press is with all three.
    }
    ASSERT_TRUE(finish());
    EXPECT_THAT(pressed,
                ElementsAre("work", "free", "function", "shifted", "work", "work", "work", "end"));
}

TEST_F(HotKeysTest, RefusedAreThoseThatCannotBeHad) {
    const auto grab = [&](xcb_keysym_t keysym) {
        xcb_key_symbols_t* symbols = xcb_key_symbols_alloc(other->get());
        xcb_keycode_t* codes = xcb_key_symbols_get_keycode(symbols, keysym);
        xcb_grab_key(other->get(), 0, other->root(), XCB_MOD_MASK_CONTROL, codes[0],
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        std::free(codes);
        xcb_key_symbols_free(symbols);
        other->serverTime();
    };
    grab('x');
    EXPECT_THAT(keys->set({{"a", "Ctrl+X"},
                           {"b", "W"},
                           {"c", "Ctrl+Nothing"},
                           {"d", "Ctrl+Alt+X"},
                           {"e", "ctrl+alt+x"},
                           {"f", "Ctrl+\u0416"}}),
                ElementsAre("a", "b", "c", "e", "f"));
    // What is not asked for any more is free again, also the combinations with locks.
    EXPECT_THAT(keys->set({}), IsEmpty());
    LinuxHotKeys second(session.environment(), loop);
    EXPECT_THAT(second.set({{"d", "Ctrl+Alt+X"}}), IsEmpty());
    EXPECT_THAT(keys->set({{"d", "Ctrl+Alt+X"}, {"end", "Pause"}}), ElementsAre("d"));
    type({"ctrl+alt+x"});
    ASSERT_TRUE(finish());
    EXPECT_THAT(pressed, ElementsAre("end"));
}

TEST_F(HotKeysTest, ShortcutFollowsItsLetterToAnotherKey) {
    ASSERT_THAT(keys->set({{"work", "Ctrl+Alt+W"}, {"end", "Pause"}}), IsEmpty());
    // The keys W and J change places; the typist looks for the letter.
    constexpr xcb_keycode_t keyW = 25;
    constexpr xcb_keycode_t keyJ = 44;
    const std::vector<xcb_keysym_t> w{'w', 'W'};
    const std::vector<xcb_keysym_t> j{'j', 'J'};
    xcb_change_keyboard_mapping(other->get(), 1, keyW, 2, j.data());
    xcb_change_keyboard_mapping(other->get(), 1, keyJ, 2, w.data());
    other->serverTime();
    // The news of it is on its way: it is typed until it has arrived.
    ASSERT_TRUE(loop.runUntil([&] {
        type({"ctrl+alt+w"});
        return !pressed.empty();
    }));
    ASSERT_TRUE(finish());
    pressed.clear();
    type({"ctrl+alt+j"}); // Where the letter was before.
    ASSERT_TRUE(finish());
    EXPECT_THAT(pressed, ElementsAre("end"));
}

TEST_F(HotKeysTest, WithoutAnXServerAllAreRefused) {
    ASSERT_THAT(keys->set({{"work", "Ctrl+Alt+W"}}), IsEmpty());
    SessionEnvironment wayland = session.environment();
    wayland.variables.insert(wayland.variables.begin(), "WAYLAND_DISPLAY=wayland-0");
    EXPECT_THAT(LinuxHotKeys(wayland, loop).set({{"free", "Ctrl+Alt+F"}}), ElementsAre("free"));
    session.stopServer();
    EXPECT_TRUE(loop.runUntil(
        [&] { return keys->set({{"work", "Ctrl+Alt+W"}}) == std::set<std::string>{"work"}; }));
}

} // namespace
} // namespace vellory::test
