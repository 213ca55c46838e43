// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/Selection.h"

namespace vellory::test {

using testing::ElementsAre;

TEST(Selection, ASweepGivesUpWhatItLeavesButNotWhatWasThereBefore) {
    Selection selection;
    selection.set({"a", "b"});
    selection.beginSweep(Selection::Before::kept);
    EXPECT_TRUE(selection.sweepOver({"b", "c", "d"}));
    EXPECT_TRUE(selection.sweepOver({"d"}));
    EXPECT_THAT(selection.apps(), ElementsAre("a", "b", "d"));
    EXPECT_FALSE(selection.sweepOver({"d"})) << "nothing new to draw";

    selection.beginSweep(Selection::Before::dropped);
    selection.sweepOver({"e"});
    EXPECT_THAT(selection.apps(), ElementsAre("e"));
}

TEST(Selection, ABandEndsAnExtensionByKeys) {
    const std::vector<Tile> items{Tile("a"), Tile("b"), Tile("c"), Tile("d")};
    Selection selection;
    selection.beginExtending(0);
    selection.extendTo(2, items);
    EXPECT_THAT(selection.apps(), ElementsAre("a", "b", "c"));
    selection.extendTo(1, items);
    EXPECT_THAT(selection.apps(), ElementsAre("a", "b"));
    selection.beginSweep(Selection::Before::dropped);
    selection.sweepOver({"d"});
    EXPECT_FALSE(selection.isExtending());
    EXPECT_THAT(selection.apps(), ElementsAre("d"));
    selection.beginExtending(3);
    EXPECT_FALSE(selection.extendTo(9, items)) << "past the last item";
    selection.drop([](const BundleID& id) { return id == "d"; });
    EXPECT_TRUE(selection.apps().empty());
}

} // namespace vellory::test
