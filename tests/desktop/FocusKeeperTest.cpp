// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/FocusKeeper.h"

#include <gtest/gtest.h>

namespace vellory::test {
namespace {

constexpr xcb_window_t work = 1;
constexpr xcb_window_t other = 2;
constexpr xcb_window_t first = 11;
constexpr xcb_window_t second = 12;
constexpr xcb_window_t third = 13;
constexpr xcb_window_t fourth = 14;

TEST(FocusKeeper, EachNewWindowGivesTheFocusBackOnce) {
    FocusKeeper keeper;
    EXPECT_FALSE(keeper.isOn(0));
    keeper.begin("app", {}, work, 0);
    EXPECT_EQ(keeper.focused(first, "app", 3), work);
    EXPECT_EQ(keeper.focused(first, "app", 3), std::nullopt) << "it is on its way back";
    EXPECT_EQ(keeper.focused(work, "", 3), std::nullopt);
    EXPECT_EQ(keeper.focused(second, "app", 5), work) << "a second window";
    EXPECT_EQ(keeper.focused(work, "", 5), std::nullopt);
    EXPECT_EQ(keeper.focused(first, "app", 5.1), std::nullopt) << "the user's own click";
    EXPECT_TRUE(keeper.isOn(FocusKeeper::startSeconds));
    EXPECT_FALSE(keeper.isOn(FocusKeeper::startSeconds + 1));
}

TEST(FocusKeeper, WindowThatHasStoodForAWhileMayBeClicked) {
    FocusKeeper keeper;
    keeper.begin("app", {}, work, 0);
    keeper.windowCame("app", first, 3);
    keeper.windowCame("app", first, 4); // Told again: it came at 3.
    EXPECT_EQ(keeper.focused(first, "app", 4.5), std::nullopt);
}

TEST(FocusKeeper, FocusGoesBackToWhereTheUserIsNow) {
    FocusKeeper keeper;
    keeper.begin("app", {first}, work, 0);
    EXPECT_EQ(keeper.focused(other, "other", 0.2), std::nullopt);
    keeper.begin("slow", {}, first, 0.3); // Its own theft does not count as the user's wish.
    EXPECT_EQ(keeper.focused(first, "app", 0.4), other);
    keeper.drop("slow");
    EXPECT_EQ(keeper.focused(second, "slow", 0.5), std::nullopt) << "wanted in front after all";

    keeper.begin("late", {}, other, 0.6);
    keeper.drop("slow", second);
    EXPECT_EQ(keeper.focused(third, "late", 0.7), second) << "the one that is wanted in front";
    keeper.begin("later", {}, second, 0.8);
    keeper.release(second);
    EXPECT_EQ(keeper.focused(fourth, "later", 0.9), std::nullopt) << "hidden in the meantime";

    FocusKeeper idle;
    idle.begin("app", {}, XCB_WINDOW_NONE, 0);
    EXPECT_EQ(idle.focused(first, "app", 1), std::nullopt) << "there is nobody to give it back to";
}

} // namespace
} // namespace vellory::test
