// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "model/GridGeometry.h"

namespace vellory::test {
namespace {

/// 4 columns of 200 and 3 rows of 200 between margins of 100.
GridGeometry pages() {
    return {.size = {1000, 600}, .columns = 4, .rows = 3, .sideMargin = 100};
}
GridGeometry list() {
    GridGeometry grid = pages();
    grid.isList = true;
    return grid;
}
GridGeometry mirrored(GridGeometry grid) {
    grid.mirrored = true;
    return grid;
}

} // namespace

TEST(GridGeometry, PagesStandBesideEachOtherAndAListGoesOnBelow) {
    EXPECT_EQ(pages().cell(5), QRectF(300, 200, 200, 200));
    EXPECT_EQ(pages().cell(12), QRectF(1100, 0, 200, 200));
    EXPECT_EQ(mirrored(pages()).cell(12), QRectF(-300, 0, 200, 200));
    EXPECT_EQ(list().cell(13), QRectF(300, 600, 200, 200));
    EXPECT_EQ(mirrored(list()).cell(13), QRectF(500, 600, 200, 200));
    EXPECT_EQ(pages().pageCount(13), 2);
    EXPECT_EQ(pages().pageCount(0), 1);
    EXPECT_EQ(list().pageCount(100), 1);
}

// Wherever the grid stands, the tile at its position is seen in its first cell.
TEST(GridGeometry, TheOriginBringsAPositionIntoView) {
    for (const GridGeometry& grid : {pages(), mirrored(pages())}) {
        EXPECT_EQ(grid.cell(24).translated(grid.origin(2)).topLeft(), grid.cell(0).topLeft());
    }
    EXPECT_EQ(list().cell(24).translated(list().origin(6)).topLeft(), list().cell(0).topLeft());
}

TEST(GridGeometry, OnlyWhatCanBeSeenIsShown) {
    using Range = GridGeometry::Range;
    EXPECT_EQ(pages().shown(1, 100), (Range{12, 24}));
    EXPECT_EQ(pages().shown(1.2, 100), (Range{12, 36}));
    EXPECT_EQ(pages().shown(1.2, 30), (Range{12, 30}));
    EXPECT_EQ(pages().shown(-0.2, 100), (Range{0, 12})) << "pulled past the first page";
    EXPECT_EQ(pages().shown(5, 20), (Range{20, 20}));
    EXPECT_EQ(list().shown(2, 100), (Range{8, 20}));
    EXPECT_EQ(list().shown(2.5, 100), (Range{8, 24}));
    EXPECT_EQ(list().shown(2.5, 22), (Range{8, 22}));
}

TEST(GridGeometry, APointBelongsToTheNearestCell) {
    struct Case {
        GridGeometry grid;
        QPointF point;
        double position;
        int cell;
        double across;
    };
    const std::vector<Case> cases{{pages(), {350, 250}, 0, 5, 0.25},
                                  {pages(), {350, 250}, 1.4, 17, 0.25},
                                  {pages(), {-50, -50}, 0, 0, 0},
                                  {pages(), {2000, 2000}, 0, 11, 0.999},
                                  {pages(), {350, 250}, 9, 17, 0.25},
                                  {mirrored(pages()), {350, 250}, 0, 6, 0.75},
                                  {list(), {350, 250}, 0, 5, 0.25},
                                  {list(), {350, 250}, 2, 13, 0.25},
                                  {list(), {350, 250}, 1.8, 13, 0.25},
                                  {list(), {350, 250}, -0.3, 5, 0.25},
                                  {mirrored(list()), {350, 250}, 2, 14, 0.75}};
    for (const auto& [grid, point, position, cell, across] : cases) {
        const auto place = grid.placeAt(point, position, 20);
        EXPECT_EQ(place.cell, cell) << point.x() << " at " << position;
        EXPECT_NEAR(place.across, across, 1e-9) << point.x() << " at " << position;
    }
}

TEST(GridGeometry, TilesAppearLaterTheFurtherTheyAreFromWhereTheGridOpens) {
    const QPointF corner(0, 0);
    EXPECT_LT(pages().rippleDelay(0, corner), pages().rippleDelay(1, corner));
    EXPECT_LT(pages().rippleDelay(1, corner), pages().rippleDelay(11, corner));
    EXPECT_EQ(pages().rippleDelay(12, corner), pages().rippleDelay(0, corner)) << "on each page";
    EXPECT_EQ(mirrored(pages()).rippleDelay(3, corner), pages().rippleDelay(0, corner));
    EXPECT_EQ(list().rippleDelay(40, corner), pages().rippleDelay(8, corner)) << "never later";
}

} // namespace vellory::test
