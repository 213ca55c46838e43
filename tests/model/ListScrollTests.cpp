// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "model/ListScroll.h"

namespace vellory::test {
namespace {

/// 20 rows of 100 pixels, 5 of them seen.
ListScroll at(double top) {
    return {.top = top, .seen = 5, .count = 20, .rowHeight = 100};
}

} // namespace

TEST(ListScroll, ShowsAllOfARowAndScrollsNoFurther) {
    EXPECT_EQ(at(3).showing(5), 3) << "is seen";
    EXPECT_EQ(at(3).showing(8), 4);
    EXPECT_EQ(at(3).showing(2), 2);
    EXPECT_EQ(at(3.5).showing(3), 3) << "was cut at the top";
    EXPECT_EQ(at(3).showing(19), 15);
    EXPECT_EQ((ListScroll{.top = 0, .seen = 5, .count = 2, .rowHeight = 100}.showing(1)), 0);
}

TEST(ListScroll, AWheelMovesByRowsAndFingersByPixels) {
    EXPECT_EQ(at(3).scrolled({.dy = -1}), 4);
    EXPECT_EQ(at(3).scrolled({.dy = 0.25}), 2.75);
    EXPECT_EQ(at(3).scrolled({.dy = -50, .precise = true}), 3.5);
    EXPECT_EQ(at(0).scrolled({.dy = 1}), 0);
    EXPECT_EQ(at(15).scrolled({.dy = -1}), 15);
    EXPECT_EQ(at(3).turned(1), 7);
    EXPECT_EQ(at(3).turned(-1), 0);
}

TEST(ListScroll, FollowsAFingerAndRunsOnWhenItLeaves) {
    EXPECT_DOUBLE_EQ(at(3).dragged(-150), 4.5);
    EXPECT_LT(at(0).dragged(100), 0);
    EXPECT_GT(at(0).dragged(1e9), -1);
    EXPECT_GT(at(15).dragged(-100), 15);
    EXPECT_DOUBLE_EQ(at(3).letGo(-150, 0).place, 4.5);
    EXPECT_GT(at(3).letGo(-150, -1000).place, 7);
    EXPECT_DOUBLE_EQ(at(3).letGo(-150, -1000).speed, 10);
    EXPECT_EQ(at(3).letGo(0, 1e6).place, 0);
}

TEST(ListScroll, ATileHeldAtTheTopOrBottomScrollsWhileThereIsMore) {
    EXPECT_EQ(at(3).turnAt(10), -1);
    EXPECT_EQ(at(3).turnAt(-20), -1);
    EXPECT_EQ(at(3).turnAt(250), 0);
    EXPECT_EQ(at(3).turnAt(490), 1);
    EXPECT_EQ(at(0).turnAt(10), 0);
    EXPECT_EQ(at(15).turnAt(490), 0);
}

} // namespace vellory::test
