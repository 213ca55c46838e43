// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "model/PageDrag.h"

namespace vellory::test {
namespace {

PageDrag on(int page, int count = 3, bool rightToLeft = false) {
    return PageDrag({.current = page, .count = count, .width = 1000, .rightToLeft = rightToLeft});
}

} // namespace

TEST(PageDrag, BeginsSidewaysAndOnlyWhereThereAreOtherPages) {
    EXPECT_TRUE(on(0).beginsWith(-9, 4));
    EXPECT_TRUE(on(0).beginsWith(9, -4));
    EXPECT_FALSE(on(0).beginsWith(8, 4));
    EXPECT_FALSE(on(0).beginsWith(0, 9));
    EXPECT_FALSE(on(0, 1).beginsWith(9, 0));
}

TEST(PageDrag, ThePagesStayUnderThePointer) {
    EXPECT_DOUBLE_EQ(on(1).position(0), 1);
    EXPECT_DOUBLE_EQ(on(1).position(-250), 1.25);
    EXPECT_DOUBLE_EQ(on(1).position(1000), 0);
    EXPECT_DOUBLE_EQ(on(1, 3, true).position(250), 1.25);
}

TEST(PageDrag, PastTheirEndsTheyFollowEverLess) {
    const double some = on(2).position(-200) - 2;
    const double more = on(2).position(-400) - 2;
    EXPECT_GT(some, 0);
    EXPECT_LT(some, 0.2);
    EXPECT_LT(more - some, some);
    EXPECT_LT(on(2).position(-1e9), 2.36);
    EXPECT_NEAR(on(0).position(200), -some, 1e-12);
    EXPECT_NEAR(on(0, 3, true).position(-200), -some, 1e-12);
    EXPECT_NEAR(on(0, 0).position(200), -some, 1e-12) << "also where there is no page";
}

TEST(PageDrag, AFarOrFastDragTurnsThePageAndKeepsItsSpeed) {
    EXPECT_EQ(on(1).letGo(-200, 0).page, 1);
    EXPECT_EQ(on(1).letGo(-300, 0).page, 2);
    EXPECT_EQ(on(1).letGo(300, 0).page, 0);
    EXPECT_EQ(on(1).letGo(-20, -700).page, 2);
    EXPECT_DOUBLE_EQ(on(1).letGo(-20, -700).speed, 0.7);
    EXPECT_EQ(on(2).letGo(-900, -700).page, 2) << "there is no further page";

    EXPECT_EQ(on(1, 3, true).letGo(300, 0).page, 2);
    EXPECT_EQ(on(1, 3, true).letGo(-20, -700).page, 0);
    EXPECT_DOUBLE_EQ(on(1, 3, true).letGo(-20, -700).speed, -0.7);
}

TEST(PageDrag, ATileHeldAtAnEdgeTurnsThePageTowardsIt) {
    for (const bool rightToLeft : {false, true}) {
        const int right = rightToLeft ? -1 : 1;
        EXPECT_EQ(on(1, 3, rightToLeft).turnAt(960), right);
        EXPECT_EQ(on(1, 3, rightToLeft).turnAt(1010), right) << "beside the page";
        EXPECT_EQ(on(1, 3, rightToLeft).turnAt(40), -right);
        EXPECT_EQ(on(1, 3, rightToLeft).turnAt(49), 0);
        EXPECT_EQ(on(1, 3, rightToLeft).turnAt(951), 0);
    }
}

} // namespace vellory::test
