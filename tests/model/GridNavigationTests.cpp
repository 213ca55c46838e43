// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "model/GridNavigation.h"

namespace vellory::test {

using GridNavigation::Grid;
using GridNavigation::Move;
using GridNavigation::moved;

namespace {

struct Case {
    std::optional<int> from;
    Move move;
    std::optional<int> to;
};

void expectMoves(const Grid& grid, const std::vector<Case>& cases) {
    for (const Case& each : cases) {
        EXPECT_EQ(moved(each.from, each.move, grid), each.to)
            << "from " << each.from.value_or(-1) << ", move " << static_cast<int>(each.move);
    }
}

} // namespace

// Pages of 3 x 2, the last with two items:   0 1 2 | 6  7  8 | 12 13
//                                            3 4 5 | 9 10 11 |
TEST(GridNavigation, MovesOverRowsAndPages) {
    expectMoves({.count = 14, .columns = 3, .rows = 2},
                {
                    {4, Move::on, 5},       {5, Move::on, 6},   // the next page's first
                    {13, Move::on, 13},     {6, Move::back, 5}, // the page before's last
                    {0, Move::back, 0},     {1, Move::down, 4},      {4, Move::down, 6},
                    {12, Move::down, 12}, // no row below, no page after
                    {4, Move::up, 1},       {7, Move::up, 5},        {1, Move::up, 1},
                    {7, Move::first, 0},    {7, Move::last, 13},     {1, Move::pageOn, 7},
                    {10, Move::pageOn, 13}, // the last page ends before
                    {13, Move::pageOn, 13}, {13, Move::pageBack, 7}, {4, Move::pageBack, 4},
                    {99, Move::back, 12}, // an old highlight past the end
                });
}

// 0 1 2
// 3
TEST(GridNavigation, AStepIntoAShortLastRowEndsOnTheLastItem) {
    expectMoves({.count = 4, .columns = 3, .rows = 2},
                {{0, Move::down, 3}, {2, Move::down, 3}, {3, Move::down, 3}, {3, Move::up, 0}});
}

TEST(GridNavigation, AListIsOnePageThatScrollsByWhatIsSeen) {
    expectMoves({.count = 14, .columns = 3, .rows = 2, .isPaged = false}, {{4, Move::down, 7},
                                                                           {12, Move::down, 12},
                                                                           {11, Move::down, 13},
                                                                           {7, Move::up, 4},
                                                                           {1, Move::pageOn, 7},
                                                                           {10, Move::pageOn, 13},
                                                                           {10, Move::pageBack, 4},
                                                                           {4, Move::pageBack, 0}});
}

TEST(GridNavigation, BeginsOnThePageShown) {
    expectMoves({.count = 14, .columns = 3, .rows = 2, .page = 1},
                {{{}, Move::on, 6}, {{}, Move::up, 6}, {{}, Move::last, 13}});
    expectMoves({.count = 0, .columns = 3, .rows = 2}, {{{}, Move::on, {}}, {5, Move::down, {}}});
}

} // namespace vellory::test
