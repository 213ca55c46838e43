// SPDX-License-Identifier: Apache-2.0
#include <limits>

#include <gmock/gmock.h>

#include "model/Launcher.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Board folderBoard() {
    return board({app("a"), folder(1, "Work", {"b", "c"}), app("d")});
}

} // namespace

TEST(Paging, PagesAreAsManyAsTheShownTilesNeed) {
    EXPECT_EQ(Launcher(0)->pageCount(), 0);
    EXPECT_EQ(Launcher(35)->pageCount(), 1);
    Launcher launcher(36); // on pages of seven by five
    EXPECT_EQ(launcher->pageCount(), 2);
    std::vector<bool> turns;
    QObject::connect(launcher.state.get(), &LauncherState::positionChanged,
                     [&](bool animated) { turns.push_back(animated); });
    launcher->goToPage(5);
    EXPECT_EQ(launcher->page(), 1);
    launcher->step(1);
    EXPECT_EQ(launcher->page(), 1);
    launcher->goToPage(-3);
    EXPECT_EQ(launcher->page(), 0);
    EXPECT_THAT(turns, ElementsAre(true, true)) << "told only when the page changes";
    launcher->goToPage(1);
    launcher.model->hide({"a35"});
    EXPECT_EQ(launcher->pageCount(), 1);
    EXPECT_EQ(launcher->page(), 0) << "a page that is gone gives way to the last";
    launcher->setColumns(0);
    EXPECT_EQ(launcher->columns(), 1);
    EXPECT_EQ(launcher->pageCount(), 7);
}

TEST(Paging, RowsAreAsManyAsFitAndTheSettingsAllow) {
    // With names a row takes 96 + 25 and a gap of 26; without, 96 and a gap of 18.
    struct Case {
        double height;
        bool labels;
        int rows;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Case& each : {Case{0, true, 1},
                             {50, true, 1},
                             {-1e9, true, 1},
                             {267.9, true, 1},
                             {268, true, 2},
                             {708.9, true, 4},
                             {709, true, 5},
                             {1e9, true, 5},
                             {infinity, true, 5},
                             {std::numeric_limits<double>::quiet_NaN(), true, 1},
                             {209.9, false, 1},
                             {210, false, 2},
                             {552, false, 5}}) {
        Launcher launcher(36);
        launcher.model->prefs().setShowLabels(each.labels);
        launcher->fitRows(each.height);
        EXPECT_EQ(launcher->rows(), each.rows) << each.height << each.labels;
    }
}

TEST(Paging, TheGridFollowsTheSettingsAndTheCompactLayout) {
    Launcher launcher(36);
    launcher->fitRows(709);
    launcher.model->prefs().setRows(3);
    EXPECT_EQ(launcher->rows(), 3);
    EXPECT_EQ(launcher->pageCount(), 2);
    launcher->setCompact(true);
    EXPECT_EQ(launcher->columns(), 5);
    EXPECT_EQ(launcher->rows(), 4) << "six rows of 64 would fit, four are wanted";
    launcher.model->prefs().setColumns(9);
    EXPECT_EQ(launcher->columns(), 5);
    launcher->setCompact(false);
    EXPECT_EQ(launcher->columns(), 9);
}

TEST(Searching, BeginsWithTheFirstKeyAndHighlightsTheFirstMatch) {
    Launcher launcher(36);
    launcher->goToPage(1);
    EXPECT_TRUE(launcher.type("a"));
    EXPECT_TRUE(launcher.type("3"));
    EXPECT_EQ(launcher->query(), "a3");
    EXPECT_EQ(launcher->pageCount(), 1);
    EXPECT_EQ(launcher->page(), 0);
    EXPECT_EQ(launcher->highlight(), 0);
    EXPECT_THAT(launcher.items(), testing::StartsWith("a30 a31 a32"));
    launcher.press(Qt::Key_Return);
    EXPECT_THAT(launcher.asked(), ElementsAre("open a30"));

    launcher.press(Qt::Key_Backspace);
    launcher.press(Qt::Key_Backspace);
    EXPECT_FALSE(launcher->searching());
    EXPECT_EQ(launcher->highlight(), std::nullopt);
    EXPECT_EQ(launcher->page(), 1) << "where the search began";
    EXPECT_FALSE(launcher.press(Qt::Key_Backspace));
}

TEST(Searching, TakesTextAndLeavesCommandsAlone) {
    struct Case {
        QString text;
        Qt::KeyboardModifiers modifiers;
        bool isUsed;
        std::string query;
    };
    for (const Case& each : {Case{"x", Qt::NoModifier, true, "x"},
                             {"X", Qt::ShiftModifier, true, "X"},
                             {"7", Qt::KeypadModifier, true, "7"},
                             {"ü", Qt::NoModifier, true, "ü"},
                             {"👩‍🚀", Qt::NoModifier, true, "👩‍🚀"},
                             {" ", Qt::NoModifier, true, ""},
                             {"", Qt::NoModifier, false, ""},
                             {"\t", Qt::NoModifier, false, ""},
                             {"\x1b", Qt::NoModifier, false, ""},
                             {"q", Qt::ControlModifier, false, ""},
                             {"q", Qt::MetaModifier, false, ""},
                             {"q", Qt::AltModifier, false, ""}}) {
        Launcher launcher(3);
        EXPECT_EQ(launcher.type(each.text, each.modifiers), each.isUsed) << each.query;
        EXPECT_EQ(launcher->query(), each.query);
        launcher.press(Qt::Key_Backspace);
        EXPECT_EQ(launcher->query(), "") << "a whole character is taken back";
    }
}

TEST(Activating, LaunchesAndAsksToHideUnlessKeptOpen) {
    for (const bool keepOpen : {false, true}) {
        Launcher launcher(3);
        launcher->setKeepOpen(keepOpen);
        launcher.press(Qt::Key_Right);
        launcher.press(Qt::Key_Right);
        launcher.press(Qt::Key_Enter, Qt::KeypadModifier);
        launcher.press(Qt::Key_Return, Qt::ControlModifier);
        EXPECT_THAT(launcher.asked(), ElementsAre("open a01", "new a01"));
        EXPECT_EQ(launcher.hides, keepOpen ? 0 : 2);
    }
}

TEST(Activating, AFolderOpensOverTheGridAndTheKeyboardGoesOnInside) {
    Launcher launcher({"a", "b", "c", "d"}, folderBoard());
    launcher->setHighlight(1);
    launcher.press(Qt::Key_Return);
    EXPECT_EQ(launcher->openFolder(), uuid(1));
    EXPECT_EQ(launcher.items(), "b c");
    EXPECT_EQ(launcher->highlight(), 0);
    EXPECT_EQ(launcher.hides, 0);
    launcher.press(Qt::Key_Right);
    launcher.press(Qt::Key_Right);
    EXPECT_EQ(launcher->highlight(), 1) << "the last app of the folder";

    launcher.press(Qt::Key_Escape);
    EXPECT_EQ(launcher->openFolder(), std::nullopt);
    EXPECT_EQ(launcher->highlight(), 1) << "on the folder again";
}

TEST(Activating, OnlyAFolderOnTheGridOpensAndStaysOpen) {
    Launcher launcher({"a", "b", "c", "d"}, folderBoard());
    launcher->setOpenFolder(uuid(77));
    EXPECT_EQ(launcher->openFolder(), std::nullopt);
    launcher.press(Qt::Key_F2);
    EXPECT_EQ(launcher->renaming(), std::nullopt);
    launcher->setOpenFolder(uuid(1));
    launcher->setOpenFolder(uuid(77));
    EXPECT_EQ(launcher->openFolder(), uuid(1));
    launcher.press(Qt::Key_F2);
    EXPECT_EQ(launcher->renaming(), "folder:" + uuid(1).string());
    launcher.model->hide({"b"});
    EXPECT_EQ(launcher.items(), "c");
    launcher.model->hide({"c"});
    EXPECT_EQ(launcher.items(), "a d");
    launcher->setOpenFolder(uuid(1));
    EXPECT_EQ(launcher->openFolder(), std::nullopt) << "there is nothing in it to show";
}

TEST(Activating, AFolderPagesByTwentyApps) {
    Launcher launcher(numbered(21), board({folder(1, "Big", numbered(21))}));
    launcher->setOpenFolder(uuid(1));
    EXPECT_EQ(launcher->folderPageCount(), 2);
    launcher->setHighlight(0);
    launcher.press(Qt::Key_Down);
    EXPECT_EQ(launcher->highlight(), LauncherState::folderColumns);
    launcher.press(Qt::Key_End);
    EXPECT_EQ(launcher->folderPage(), 1);
    launcher->step(-1);
    EXPECT_EQ(launcher->folderPage(), 0);
    EXPECT_EQ(launcher->page(), 0);
    launcher.model->hide({"a03"});
    EXPECT_EQ(launcher->folderPageCount(), 1);
}

TEST(Back, LeavesOneThingAtATime) {
    Launcher launcher({"a", "b", "c", "d"}, folderBoard());
    launcher->setShowWindows(true);
    launcher->setQuery("b");
    launcher->setOpenFolder(uuid(1));
    launcher->toggleSelected("a");
    launcher->setPanel(LauncherState::Panel::settings);

    launcher->back();
    EXPECT_THAT(launcher->selected(), IsEmpty());
    EXPECT_TRUE(launcher->openFolder());
    launcher->back();
    EXPECT_FALSE(launcher->openFolder());
    EXPECT_TRUE(launcher->searching());
    launcher->back();
    EXPECT_FALSE(launcher->searching());
    EXPECT_TRUE(launcher->showWindows());
    launcher->back();
    EXPECT_FALSE(launcher->showWindows());
    EXPECT_TRUE(launcher->isCovered());
    launcher->back();
    EXPECT_EQ(launcher->panel(), LauncherState::Panel::none);
    EXPECT_EQ(launcher.hides, 0);
    launcher->back();
    EXPECT_EQ(launcher.hides, 1);
}

// A link can search while the settings are open.
TEST(Panels, PutsAwayWhatWouldLieOverTheMatches) {
    Launcher launcher(3);
    launcher->togglePanel(LauncherState::Panel::settings);
    launcher->setQuery("a");
    EXPECT_EQ(launcher->panel(), LauncherState::Panel::none);
    launcher->togglePanel(LauncherState::Panel::settings);
    launcher->setQuery("a");
    EXPECT_EQ(launcher->panel(), LauncherState::Panel::none) << "also for what is searched already";
    launcher->setPanel(LauncherState::Panel::workspaces);
    launcher->setQuery("b");
    EXPECT_EQ(launcher->panel(), LauncherState::Panel::workspaces) << "stands beside them";
}

TEST(Back, ResetForgetsEverythingAtOnce) {
    Launcher launcher(36);
    launcher->goToPage(1);
    launcher->setHintsMode(true);
    launcher->toggleSelected("a01");
    launcher->setShowWindows(true);
    launcher->setDragOffset(12);
    launcher->setQuery("a");
    launcher->reset();
    EXPECT_EQ(launcher->query(), "");
    EXPECT_EQ(launcher->page(), 0);
    EXPECT_EQ(launcher->highlight(), std::nullopt);
    EXPECT_THAT(launcher->selected(), IsEmpty());
    EXPECT_FALSE(launcher->hints().isOn());
    EXPECT_FALSE(launcher->showWindows());
    EXPECT_EQ(launcher->dragOffset(), 0);
    EXPECT_EQ(launcher->currentItems(), launcher.model->visibleTiles());
}

TEST(Highlight, TurnsThePageItMovesToAndBeginsOnThePageShown) {
    Launcher launcher(36);
    launcher.press(Qt::Key_PageDown);
    EXPECT_EQ(launcher->page(), 1);
    EXPECT_EQ(launcher->highlight(), std::nullopt);
    launcher.press(Qt::Key_Down);
    EXPECT_EQ(launcher->highlight(), 35);
    launcher->setHighlight(34);
    launcher.press(Qt::Key_Right);
    EXPECT_EQ(launcher->highlight(), 35);
    EXPECT_EQ(launcher->page(), 1);
    launcher.press(Qt::Key_Up);
    EXPECT_EQ(launcher->highlight(), 34) << "the last item of the page before";
    EXPECT_EQ(launcher->page(), 0);
    launcher.press(Qt::Key_PageDown);
    EXPECT_EQ(launcher->highlight(), 35);
}

TEST(Highlight, ReadsFromTheRightWhereTheUserDoes) {
    Launcher launcher(36);
    launcher->setRightToLeft(true);
    launcher->setHighlight(34);
    launcher.press(Qt::Key_Left);
    EXPECT_EQ(launcher->highlight(), 35);
    launcher.press(Qt::Key_Right);
    EXPECT_EQ(launcher->highlight(), 34);
    launcher.press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(launcher->page(), 1);
    launcher.press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(launcher->page(), 1);
}

TEST(Highlight, IsLostWithItsItem) {
    Launcher launcher(3);
    launcher->setHighlight(2);
    launcher.model->hide({"a00"});
    EXPECT_EQ(launcher->highlight(), std::nullopt);
    EXPECT_FALSE(launcher.press(Qt::Key_Return));
    launcher->setHighlight(17);
    EXPECT_EQ(launcher->highlight(), std::nullopt);
}

TEST(Hints, AreTwoLettersThatActivateAnItemOfThePageShown) {
    const std::vector<std::pair<int, std::string>> labels{
        {0, "AA"}, {1, "AS"}, {25, "AM"}, {26, "SA"}, {675, "MM"}, {676, "AA"}, {-1, "AA"}};
    for (const auto& [index, label] : labels) {
        EXPECT_EQ(Hints::label(index), label) << index;
    }
    Launcher launcher(36);
    launcher.press(Qt::Key_G, Qt::ControlModifier);
    launcher.type("s");
    EXPECT_EQ(launcher->hints().typed(), "S");
    launcher.type("m");
    EXPECT_EQ(launcher->hints().typed(), "S") << "SM is on no tile of this page";
    launcher.type("S");
    EXPECT_THAT(launcher.asked(), ElementsAre("open a27"));
    EXPECT_FALSE(launcher->hints().isOn());
    EXPECT_EQ(launcher->query(), "") << "letters of hints are no search";
}

TEST(Hints, EndWithAnyOtherKey) {
    Launcher launcher(3);
    launcher->setHintsMode(true);
    launcher.type("a");
    launcher.press(Qt::Key_Backspace);
    EXPECT_EQ(launcher->hints().typed(), "");
    EXPECT_TRUE(launcher->hints().isOn());
    EXPECT_TRUE(launcher.press(Qt::Key_Escape));
    EXPECT_FALSE(launcher->hints().isOn());
    EXPECT_EQ(launcher.hides, 0);
}

TEST(Scrolling, TurnsPagesOfTheGridButNotOfMatches) {
    Launcher launcher(36);
    EXPECT_TRUE(launcher->handleScroll({.dy = -1}));
    EXPECT_EQ(launcher->page(), 1);
    launcher->setRightToLeft(true);
    EXPECT_TRUE(launcher->handleScroll({.dx = -1}));
    EXPECT_EQ(launcher->page(), 0) << "pushed to the left, where the first page lies";
    launcher->setQuery("a");
    EXPECT_FALSE(launcher->handleScroll({.dy = -1})) << "the matches scroll by themselves";
}

} // namespace vellory::test
