// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/Launcher.h"

// The grid as one list that scrolls.

namespace vellory::test {

using testing::ElementsAre;

namespace {

/// 15 rows of 7, of which 5 are seen.
struct Listed : Launcher {
    Listed() : Launcher(100) {
        model->prefs().setDisplayMode(Prefs::DisplayMode::list);
        state->fitRows(709);
    }
};

} // namespace

TEST(List, ScrollsToWhateverTheKeyboardIsOn) {
    Listed launcher;
    EXPECT_EQ(launcher->pageCount(), 1);
    launcher.press(Qt::Key_End);
    EXPECT_EQ(launcher->highlight(), 99);
    EXPECT_EQ(launcher->view().position(), 10);
    launcher.press(Qt::Key_PageUp);
    EXPECT_EQ(launcher->highlight(), 64);
    EXPECT_EQ(launcher->view().position(), 9);
    launcher->setHighlight(std::nullopt);
    launcher.press(Qt::Key_PageUp);
    EXPECT_EQ(launcher->view().position(), 5) << "a screen back, with a row in common";
    launcher.press(Qt::Key_Down);
    EXPECT_EQ(launcher->highlight(), 35) << "begins with the first row that is seen";
}

TEST(List, ScrollsWithTheWheelAndStaysWithinItsRows) {
    Listed launcher;
    std::vector<bool> moves;
    QObject::connect(launcher.state.get(), &LauncherState::positionChanged,
                     [&](bool animated) { moves.push_back(animated); });
    EXPECT_TRUE(launcher->handleScroll({.dy = -2}));
    EXPECT_EQ(launcher->view().position(), 2);
    EXPECT_TRUE(launcher->handleScroll({.dy = -50, .precise = true}));
    EXPECT_GT(launcher->view().position(), 2);
    EXPECT_THAT(moves, ElementsAre(true, false)) << "fingers move it themselves";
    launcher->handleScroll({.dy = -1000});
    EXPECT_EQ(launcher->view().position(), 10);
    launcher->setColumns(20);
    EXPECT_EQ(launcher->view().position(), 0) << "all five rows are seen now";
}

TEST(List, KeepsItsPlaceWhileSearching) {
    Listed launcher;
    launcher->handleScroll({.dy = -4});
    launcher.type("a");
    EXPECT_FALSE(launcher->handleScroll({.dy = -1}));
    launcher->setQuery("");
    EXPECT_EQ(launcher->view().position(), 4);
    launcher->reset();
    EXPECT_EQ(launcher->view().position(), 0);
}

TEST(List, HintsLeadToWhatIsInView) {
    Listed launcher;
    launcher->handleScroll({.dy = -1000});
    launcher->setHintsMode(true);
    launcher.type("a");
    EXPECT_EQ(launcher->hints().typed(), "") << "AA is on the first tile, out of view";
    launcher.type(QString(QChar(Hints::label(99)[0])));
    launcher.type(QString(QChar(Hints::label(99)[1])));
    EXPECT_THAT(launcher.asked(), ElementsAre("open a99"));
}

TEST(List, BecomesPagesAgainWhenTheSettingsSaySo) {
    Listed launcher;
    launcher->handleScroll({.dy = -1000});
    launcher.model->prefs().setDisplayMode(Prefs::DisplayMode::pages);
    EXPECT_EQ(launcher->pageCount(), 3);
    EXPECT_EQ(launcher->view().position(), 0);
    launcher->goToPage(2);
    launcher.model->prefs().setDisplayMode(Prefs::DisplayMode::list);
    EXPECT_EQ(launcher->pageCount(), 1);
    EXPECT_EQ(launcher->page(), 0);
}

} // namespace vellory::test
