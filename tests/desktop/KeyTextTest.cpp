// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/KeyText.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "support/HostileTexts.h"

namespace vellory::test {
namespace {

TEST(KeyText, NamesModifiersAndOneKey) {
    struct Row {
        const char* text;
        KeyText keys; // control, alt, shift, meta, key
    };
    for (const Row& row : std::vector<Row>{
             {"Ctrl+Alt+W", {true, true, false, false, XKB_KEY_w}},
             {"ctrl+alt+w", {true, true, false, false, XKB_KEY_w}},
             {"Meta+Space", {false, false, false, true, XKB_KEY_space}},
             {"Ctrl++", {true, false, false, false, XKB_KEY_plus}},
             {"Ctrl+Shift++", {true, false, true, false, XKB_KEY_plus}},
             {"Alt+,", {false, true, false, false, XKB_KEY_comma}},
             {"Ctrl+\u00d6", {true, false, false, false, XKB_KEY_odiaeresis}},
             {"Ctrl+\u0416", {true, false, false, false, XKB_KEY_Cyrillic_zhe}},
             {"Ctrl+5", {true, false, false, false, XKB_KEY_5}},
             {"Meta+PgDown", {false, false, false, true, XKB_KEY_Next}},
             {"Alt+Shift+Return", {false, true, true, false, XKB_KEY_Return}},
             {"F4", {false, false, false, false, XKB_KEY_F4}},
             {"Shift+F12", {false, false, true, false, XKB_KEY_F12}},
             {"Print", {false, false, false, false, XKB_KEY_Print}},
             {"Media Play", {false, false, false, false, XKB_KEY_XF86AudioPlay}},
             {"Volume Up", {false, false, false, false, XKB_KEY_XF86AudioRaiseVolume}}}) {
        EXPECT_EQ(KeyText::parse(row.text), row.keys) << row.text;
    }
}

TEST(KeyText, WhatPeopleTypeWithAndWhatIsNoKeyIsRefused) {
    const std::string typed = "W Shift+W Shift+1 Space Return Esc Del Left Tab";
    const std::string none =
        "+ ++ Ctrl Ctrl+ Ctrl+Alt Meta+Shift Ctrl+Shift_L Ctrl+NoSuchKey Foo+W "
        "Ctrl+W+X Ctrl+\xff Ctrl+\xc3";
    auto texts = wordsOf(typed + " " + none);
    texts.insert(texts.end(), {"", "Ctrl+W, Ctrl+X", "Ctrl + W", "Ctrl+\n", "Ctrl+ "});
    for (const std::string& text : texts) {
        EXPECT_EQ(KeyText::parse(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace vellory::test
