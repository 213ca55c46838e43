// SPDX-License-Identifier: Apache-2.0
#include <limits>

#include <gmock/gmock.h>

#include "model/LauncherState.h"
#include "model/World.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A launcher over a grid of apps named "a00", "a01" and so on.
struct Launcher : World {
    std::unique_ptr<LauncherState> state;
    int hides = 0;

    explicit Launcher(int count) {
        Board grid;
        std::vector<BundleID> ids;
        for (int i = 0; i < count; ++i) {
            ids.push_back((i < 10 ? "a0" : "a") + std::to_string(i));
            grid.tiles.emplace_back(ids.back());
        }
        open(ids, grid);
    }
    Launcher(const std::vector<BundleID>& ids, const Board& grid) { open(ids, grid); }

    LauncherState* operator->() { return state.get(); }

    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return state->handleKey({key, modifiers, {}});
    }
    bool type(const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return state->handleKey({Qt::Key_unknown, modifiers, text});
    }
    std::string items() const { return drawn(board(state->currentItems())); }
    /// Apps that were asked for, in order.
    const std::vector<std::string>& asked() const { return runningApps.asked; }

  private:
    void open(const std::vector<BundleID>& ids, const Board& grid) {
        startWith(ids, grid);
        state = std::make_unique<LauncherState>(*model);
        QObject::connect(state.get(), &LauncherState::hideRequested, [this] { ++hides; });
    }
};

Board folderBoard() {
    return board({app("a"), folder(1, "Work", {"b", "c"}), app("d")});
}

} // namespace

TEST(Paging, ThirtySixTilesOnSevenByFiveMakeTwoPages) {
    Launcher launcher(36);
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
}

TEST(Paging, CountsPagesOfWhatIsShown) {
    EXPECT_EQ(Launcher(0)->pageCount(), 0);
    EXPECT_EQ(Launcher(35)->pageCount(), 1);
    Launcher launcher(36);
    launcher->setColumns(0);
    EXPECT_EQ(launcher->columns(), 1);
    EXPECT_EQ(launcher->pageCount(), 8);
    launcher.model->prefs().setDisplayMode(Prefs::DisplayMode::list);
    EXPECT_EQ(launcher->pageCount(), 1);
}

TEST(Paging, APageThatIsGoneGivesWayToTheLast) {
    Launcher launcher(36);
    launcher->goToPage(1);
    launcher.model->hide({"a35"});
    EXPECT_EQ(launcher->pageCount(), 1);
    EXPECT_EQ(launcher->page(), 0);
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
    }
}

TEST(Searching, BackspaceTakesAWholeCharacter) {
    Launcher launcher(3);
    launcher->setQuery("a👩‍🚀");
    launcher.press(Qt::Key_Backspace);
    EXPECT_EQ(launcher->query(), "a");
}

TEST(Searching, ReturnWithoutAMatchOpensNothing) {
    Launcher launcher(3);
    launcher->setQuery("nothing like it");
    EXPECT_FALSE(launcher.press(Qt::Key_Return));
    EXPECT_THAT(launcher.asked(), IsEmpty());
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

TEST(Activating, AFolderThatIsGoneIsNoLongerOpen) {
    Launcher launcher({"a", "b", "c", "d"}, folderBoard());
    launcher->setOpenFolder(uuid(1));
    launcher.model->hide({"b"});
    EXPECT_EQ(launcher.items(), "c");
    launcher.model->hide({"c"});
    EXPECT_EQ(launcher->openFolder(), std::nullopt);
    EXPECT_EQ(launcher.items(), "a d");
}

TEST(Activating, OnlyAFolderOnTheGridOpens) {
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
    launcher.model->hide({"b", "c"});
    launcher->setOpenFolder(uuid(1));
    EXPECT_EQ(launcher->openFolder(), std::nullopt) << "there is nothing in it to show";
}

TEST(Activating, AFolderPagesByTwentyApps) {
    std::vector<BundleID> ids;
    for (int i = 0; i < 21; ++i) {
        ids.push_back("x" + std::to_string(i));
    }
    Launcher launcher(ids, board({folder(1, "Big", ids)}));
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
    launcher.model->hide({"x3"});
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

TEST(Highlight, TurnsThePageItMovesTo) {
    Launcher launcher(36);
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

TEST(Highlight, BeginsOnThePageShownAndPageKeysTurnPagesWithoutOne) {
    Launcher launcher(36);
    launcher.press(Qt::Key_PageDown);
    EXPECT_EQ(launcher->page(), 1);
    EXPECT_EQ(launcher->highlight(), std::nullopt);
    launcher.press(Qt::Key_Down);
    EXPECT_EQ(launcher->highlight(), 35);
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

TEST(Selection, IsMadeByKeyboardTooAndForgetsWhatIsHidden) {
    Launcher launcher(3);
    launcher->setHighlight(1);
    launcher.press(Qt::Key_Space, Qt::ControlModifier);
    launcher.press(Qt::Key_Right);
    launcher.press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_THAT(launcher->selected(), ElementsAre("a01", "a02"));
    launcher.model->hide({"a01"});
    EXPECT_THAT(launcher->selected(), ElementsAre("a02"));
}

TEST(Hints, AreTwoLettersForEachItem) {
    const std::vector<std::pair<int, std::string>> labels{
        {0, "AA"}, {1, "AS"}, {25, "AM"}, {26, "SA"}, {675, "MM"}, {676, "AA"}, {-1, "AA"}};
    for (const auto& [index, label] : labels) {
        EXPECT_EQ(Hints::label(index), label) << index;
    }
}

TEST(Hints, TypedOutActivateAnItemOfThePageShown) {
    Launcher launcher(36);
    launcher.press(Qt::Key_G, Qt::ControlModifier);
    ASSERT_TRUE(launcher->hints().isOn());
    launcher.type("s");
    EXPECT_EQ(launcher->hints().typed(), "S");
    launcher.type("m");
    EXPECT_EQ(launcher->hints().typed(), "S") << "SM is on no tile of this page";
    launcher.type("S");
    EXPECT_THAT(launcher.asked(), ElementsAre("open a27"));
    EXPECT_FALSE(launcher->hints().isOn());
    EXPECT_EQ(launcher->hints().typed(), "");
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

// --- The grid as one list ---

namespace {
/// 15 rows of 7, of which 5 are seen.
void makeList(Launcher& launcher) {
    launcher.model->prefs().setDisplayMode(Prefs::DisplayMode::list);
    launcher->fitRows(709);
}
} // namespace

TEST(List, ScrollsToWhateverTheKeyboardIsOn) {
    Launcher launcher(100);
    makeList(launcher);
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
    Launcher launcher(100);
    makeList(launcher);
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
    Launcher launcher(100);
    makeList(launcher);
    launcher->handleScroll({.dy = -4});
    launcher.type("a");
    EXPECT_FALSE(launcher->handleScroll({.dy = -1}));
    launcher->setQuery("");
    EXPECT_EQ(launcher->view().position(), 4);
    launcher->reset();
    EXPECT_EQ(launcher->view().position(), 0);
}

TEST(List, HintsLeadToWhatIsInView) {
    Launcher launcher(100);
    makeList(launcher);
    launcher->handleScroll({.dy = -1000});
    launcher->setHintsMode(true);
    launcher.type("a");
    EXPECT_EQ(launcher->hints().typed(), "") << "AA is on the first tile, out of view";
    launcher.type(QString(QChar(Hints::label(99)[0])));
    launcher.type(QString(QChar(Hints::label(99)[1])));
    EXPECT_THAT(launcher.asked(), ElementsAre("open a99"));
}

TEST(List, BecomesPagesAgainWhenTheSettingsSaySo) {
    Launcher launcher(100);
    makeList(launcher);
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
