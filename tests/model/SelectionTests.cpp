// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/Launcher.h"
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
    const std::vector<Tile> items = boardOf({"a", "b", "c", "d"}).tiles;
    Selection selection;
    selection.beginExtending(0);
    selection.extendTo(1, items);
    selection.beginSweep(Selection::Before::dropped);
    selection.sweepOver({"d"});
    EXPECT_FALSE(selection.isExtending());
    EXPECT_THAT(selection.apps(), ElementsAre("d"));
    selection.beginExtending(3);
    EXPECT_FALSE(selection.extendTo(9, items)) << "past the last item";
}

TEST(Selection, KeysSelectOneByOneOrWhatIsBetween) {
    Launcher launcher(5);
    launcher->setHighlight(4);
    launcher.press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_THAT(launcher->selected(), ElementsAre("a04"));
    launcher->setHighlight(1);
    launcher.press(Qt::Key_Right, Qt::ShiftModifier);
    launcher.press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_THAT(launcher->selected(), ElementsAre("a01", "a02", "a03", "a04"));
    launcher.press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_THAT(launcher->selected(), ElementsAre("a01", "a02", "a04")) << "and gives back";
    launcher.press(Qt::Key_Left);
    launcher.press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_THAT(launcher->selected(), ElementsAre("a00", "a01", "a02", "a04"))
        << "a new stretch begins at the highlight";
    launcher.model->hide({"a01"});
    EXPECT_THAT(launcher->selected(), ElementsAre("a00", "a02", "a04"));
    launcher.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(launcher->selected().size(), 4U);
}

} // namespace vellory::test
