// SPDX-License-Identifier: Apache-2.0
#include "Input/GridMotion.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace vellory::GridMotion {
namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(GridMotion, PositionIsTheTilesCentreInTheUnitSquare) {
    EXPECT_EQ(position({0, 0, 4, 2}), (Point{0.125, 0.25}));
    EXPECT_EQ(position({3, 1, 4, 2}), (Point{0.875, 0.75}));
    // No columns or rows count as one.
    EXPECT_EQ(position({0, 0, 0, -3}), (Point{0.5, 0.5}));
}

TEST(GridMotion, DistanceIsAShareOfTheGridsDiagonal) {
    // From the corner (0,0) of a fine grid to the opposite tile: all but one, at any aspect.
    for (const double aspect : {0.5, 1.0, 1.6, 3.0}) {
        EXPECT_NEAR(distance({999, 999, 1000, 1000}, {0, 0}, aspect), 1.0, 0.001) << aspect;
    }
    // 0.25 of the width on a grid twice as wide as high: 0.5 / sqrt(5).
    EXPECT_NEAR(distance({0, 0, 1, 1}, {0.25, 0.5}, 2), 0.5 / std::sqrt(5.0), 1e-12);
}

TEST(GridMotion, RippleRunsOutwardsAndNoTileWaitsLongerThanTheSpread) {
    EXPECT_EQ(rippleDelay({0, 0, 1, 1}, {0.5, 0.5}, 0.4), 0);
    // 0.5 of the width away: 0.4 * (0.5 * 1.6) / 1.886796226411321.
    EXPECT_NEAR(rippleDelay({0, 0, 1, 1}, {0, 0.5}, 0.4), 0.32 / 1.886796226411321, 1e-12);
    EXPECT_EQ(rippleDelay({0, 0, 1, 1}, {-5, 9}, 0.4), 0.4);
}

TEST(GridMotion, RippleOffsetPullsTowardsTheOriginByItsLength) {
    const Point offset = rippleOffset({0, 0, 1, 1}, {0.8, 0.9}, 10); // 3-4-5 triangle
    EXPECT_NEAR(offset.x, 6, 1e-12);
    EXPECT_NEAR(offset.y, 8, 1e-12);
    EXPECT_EQ(rippleOffset({0, 0, 1, 1}, {0.5, 0.50005}, 10), Point{});
}

TEST(GridMotion, RubberBandFollowsAtFirstAndNeverReachesItsLimit) {
    EXPECT_EQ(rubberBand(0, 100, 0.5), 0);
    EXPECT_NEAR(rubberBand(0.001, 100, 0.5), 0.0005, 1e-8);
    EXPECT_NEAR(rubberBand(200, 100, 0.5), 50, 1e-12); // 100 * (1 - 1 / 2)
    EXPECT_EQ(rubberBand(-200, 100, 0.5), -rubberBand(200, 100, 0.5));
    for (const double huge : {1e9, 1e300, inf}) {
        EXPECT_GT(rubberBand(huge, 100, 0.5), 99.9) << huge;
        EXPECT_LT(rubberBand(huge, 100, 0.5), 100) << huge;
        EXPECT_GT(rubberBand(-huge, 100, 0.5), -100) << huge;
    }
    for (const double limit : {0.0, -1.0, nan}) {
        EXPECT_EQ(rubberBand(50, limit, 0.5), 0) << limit;
    }
    EXPECT_EQ(rubberBand(nan, 100, 0.5), 0);
}

TEST(GridMotion, PageTargetFollowsDragsAndFlicks) {
    constexpr double width = 1000;
    constexpr int greatest = std::numeric_limits<int>::max();
    struct Case {
        int current;
        Drag drag;
        int pageCount;
        int target;
    };
    const Case cases[] = {
        {3, {0, 0}, 10, 3},
        {3, {0, 700}, 10, 2}, // a flick alone
        {3, {0, -700}, 10, 4},
        {3, {0, 650}, 10, 3}, // exactly the flick's speed is none
        {3, {0, -650}, 10, 3},
        {3, {250, 0}, 10, 3},    // exactly a quarter of the page turns nothing
        {3, {251, 0}, 10, 2},    //
        {3, {-251, 0}, 10, 4},   //
        {3, {170, 600}, 10, 2},  // 170 + 96 of momentum
        {3, {-300, 600}, 10, 3}, // the momentum takes the drag back: -204
        {3, {-1700, -3000}, 10, 5},
        {3, {-1700, -3000}, 5, 4},  // clamped
        {3, {-1700, -2600}, 10, 4}, // far, but not fast enough for two
        {3, {-100, -3000}, 10, 4},  // fast, but only 580 far
        {1, {1700, 3000}, 10, 0},
        {0, {400, 700}, 1, 0}, // a single page
        {7, {0, 0}, 3, 2},     // a page that is gone
        {-4, {0, 0}, 3, 0},
        {greatest, {0, -700}, greatest, greatest - 1},
        {3, {nan, nan}, 10, 3},
        {3, {inf, 0}, 10, 2},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(pageTarget(c.current, c.drag, width, c.pageCount), c.target)
            << "page " << c.current << " of " << c.pageCount << ", offset " << c.drag.offset
            << ", velocity " << c.drag.velocity;
    }
    for (const double none : {0.0, -1.0, nan}) {
        EXPECT_EQ(pageTarget(3, {0, 0}, none, 10), 0) << none;
    }
}

} // namespace
} // namespace vellory::GridMotion
