// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/Launcher.h"
#include "model/TileMenu.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double left = 0.1;
constexpr double middle = 0.5;
constexpr double right = 0.9;

struct Arranging : Launcher {
    Arranging(const std::vector<BundleID>& installed, const Board& grid)
        : Launcher(installed, grid) {
        state->setPresented(true);
    }

    TileDrag& drag() { return state->drag(); }
    std::string arranged() { return drawn(board(drag().arranged())); }
    /// Picks up a tile of the open folder and carries it out.
    void takeOut(const char* tile) {
        state->setOpenFolder(uuid(1));
        drag().begin(tile);
        drag().leaveFolder();
    }
};

Arranging five() {
    return Arranging({"a", "b", "c", "d", "e"}, boardOf({"a", "b", "c", "d", "e"}));
}

/// a [F: x y z] b
Arranging withFolder() {
    return Arranging({"a", "b", "x", "y", "z"},
                     board({app("a"), folder(1, "F", {"x", "y", "z"}), app("b")}));
}

// --- Where the pointer is, and who makes room ---

TEST(TileDrag, OthersMakeRoomAndOneMoveIsSavedWhenItIsLetGo) {
    Arranging world = five();
    ASSERT_TRUE(world.drag().begin("app:b"));
    world.drag().hover({3, right}); // after d
    EXPECT_EQ(world.arranged(), "a c d b e");
    // It now stands under the pointer: staying there changes nothing.
    world.drag().hover({3, left});
    EXPECT_EQ(world.arranged(), "a c d b e");
    world.drag().hover({0, left});
    EXPECT_EQ(world.arranged(), "b a c d e");
    world.drag().hover({2, left}); // before c, which stands at 2 now
    EXPECT_EQ(world.arranged(), "a b c d e");
    world.drag().hover({4, left});
    EXPECT_EQ(world.arranged(), "a c d b e");
    EXPECT_EQ(world.inMemory(), "a b c d e") << "nothing is edited on the way";
    EXPECT_THAT(world.history(), IsEmpty());

    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "a c d b e");
    EXPECT_THAT(world.history(), ElementsAre("Moved"));
    EXPECT_FALSE(world.drag().isActive());

    // The background is the end of the grid.
    world.drag().begin("app:c");
    world.drag().hover({17, middle});
    EXPECT_TRUE(world.drag().isOverBackground());
    EXPECT_EQ(world.arranged(), "a d b e c");
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "a d b e c");
    EXPECT_EQ(world.history().front(), "Moved_to_end");
}

TEST(TileDrag, EveryPlaceOnTheGridIsWhereTheTileLands) {
    for (int from = 0; from < 5; ++from) {
        for (int cell = 0; cell < 5; ++cell) {
            for (const double across : {left, right}) {
                Arranging world = five();
                ASSERT_TRUE(world.drag().begin(world.state->currentItems()[from].id()));
                world.drag().hover({cell, across});
                const std::string expected = world.arranged();
                world.state->dropTile();
                EXPECT_EQ(world.grid(), expected) << from << " to " << cell << " at " << across;
            }
        }
    }
}

TEST(TileDrag, TheMiddleOfATileTakesAnAppInButNotAFolder) {
    Arranging world = five();
    world.drag().begin("app:a");
    world.drag().hover({2, middle});
    EXPECT_EQ(world.drag().target(), "app:c");
    EXPECT_EQ(world.arranged(), "a b c d e") << "the target stays where it is";
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "b [New folder: c a] d e");
    EXPECT_THAT(world.history(), ElementsAre("Made_a_folder"));
    ASSERT_TRUE(world.state->openFolder());
    EXPECT_EQ(world.state->renaming(), world.model->board().tiles[1].id())
        << "its name waits to be typed";
    world.state->endRenaming("Tools");
    EXPECT_EQ(world.onDisk(), "b [Tools: c a] d e");

    world.state->setOpenFolder(std::nullopt);
    world.drag().begin("app:e");
    world.drag().hover({1, middle});
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "b [Tools: c a e] d");
    EXPECT_EQ(world.history().front(), "Moved");
    EXPECT_FALSE(world.state->openFolder()) << "an old folder stays closed";

    world.drag().begin(world.model->visibleTiles()[1].id());
    world.drag().hover({2, middle});
    EXPECT_FALSE(world.drag().target());
}

// --- Folders ---

TEST(TileDrag, InAnOpenFolderAppsAreArrangedAndCanLeaveIt) {
    Arranging world = withFolder();
    world.state->setOpenFolder(uuid(1));
    world.drag().begin("app:x");
    world.drag().hover({2, right});
    EXPECT_EQ(world.arranged(), "y z x");
    world.drag().hover({1, middle});
    EXPECT_FALSE(world.drag().target()) << "no folders in folders";
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "a [F: y z x] b");

    world.drag().begin("app:z");
    world.drag().leaveFolder();
    EXPECT_FALSE(world.state->openFolder());
    EXPECT_EQ(world.arranged(), "a [F: y z x] b") << "it has no place on the grid yet";
    world.drag().hover({2, left});
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "a [F: y x] z b");
    EXPECT_EQ(world.history().front(), "Moved_out_of_folder");
}

TEST(TileDrag, OutOfAFolderItComesRightAfterItOrOntoAnotherTile) {
    Arranging world = withFolder();
    world.takeOut("app:y");
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "a [F: x z] y b");
    world.takeOut("app:x");
    world.drag().hover({3, middle});
    EXPECT_EQ(world.drag().target(), "app:b");
    world.state->dropTile();
    EXPECT_EQ(world.onDisk(), "a [F: z] y [New folder: b x]");
}

// --- What must not happen ---

TEST(TileDrag, EscapePutsEverythingBack) {
    Arranging world = withFolder();
    world.takeOut("app:x");
    world.drag().hover({0, left});
    world.press(Qt::Key_Escape);
    EXPECT_FALSE(world.drag().isActive());
    EXPECT_EQ(world.inMemory(), "a [F: x y z] b");
    EXPECT_EQ(world.state->openFolder(), uuid(1)) << "the folder is open again";
    EXPECT_THAT(world.history(), IsEmpty());
}

TEST(TileDrag, ARescanThatTakesTheTileOrTheTargetAwayLosesNothing) {
    Arranging world = five();
    world.drag().begin("app:b");
    world.drag().hover({3, middle});
    world.catalogue.uninstall("d");
    world.model->rescan();
    EXPECT_TRUE(world.drag().isActive());
    EXPECT_FALSE(world.drag().target());
    world.drag().hover({0, left});
    world.catalogue.uninstall("a"); // its old place moves by one
    world.model->rescan();
    world.drag().hover({2, right});
    const std::string expected = world.arranged();
    world.state->dropTile();
    EXPECT_EQ(world.grid(), expected);

    world.drag().begin("app:c");
    world.catalogue.uninstall("c");
    world.model->rescan();
    EXPECT_FALSE(world.drag().isActive());
    world.state->dropTile();
    EXPECT_EQ(world.grid(), "e b");
}

TEST(TileDrag, HidingTheLauncherEndsIt) {
    Arranging world = five();
    world.drag().begin("app:b");
    world.drag().hover({4, right});
    world.state->setPresented(false);
    EXPECT_FALSE(world.drag().isActive());
    EXPECT_EQ(world.inMemory(), "a b c d e");
    EXPECT_FALSE(world.drag().begin("app:nobody"));
    world.state->setQuery("a");
    EXPECT_FALSE(world.drag().begin("app:a")) << "results have no order of their own";
}

// --- By keys alone ---

TEST(TileDrag, KeysMoveATileAndAimItAtAnother) {
    Arranging world = five();
    world.state->setHighlight(0);
    world.press(Qt::Key_M, Qt::ControlModifier);
    ASSERT_TRUE(world.drag().isActive());
    world.press(Qt::Key_Right);
    world.press(Qt::Key_Right);
    EXPECT_EQ(world.arranged(), "b c a d e");
    world.press(Qt::Key_Return);
    EXPECT_EQ(world.onDisk(), "b c a d e");
    EXPECT_EQ(world.state->highlight(), 2) << "the highlight goes with it";

    world.press(Qt::Key_M, Qt::ControlModifier);
    world.press(Qt::Key_Tab);
    EXPECT_EQ(world.drag().target(), "app:d");
    world.press(Qt::Key_Tab);
    EXPECT_FALSE(world.drag().target());
    world.press(Qt::Key_Tab);
    world.press(Qt::Key_Return);
    EXPECT_EQ(world.onDisk(), "b c [New folder: d a] e");
}

// --- Menus ---

/// Runs the entry with this text, also in submenus.
bool choose(const Menu& menu, const std::string& text) {
    for (const MenuEntry& entry : menu) {
        if (entry.text == text && entry.action) {
            entry.action();
            return true;
        }
        if (choose(entry.entries, text)) {
            return true;
        }
    }
    return false;
}

TEST(TileMenu, WhatIsChosenIsDone) {
    Arranging world = withFolder();
    const TileMenu menus(*world.model, *world.state);
    world.state->setSelected({"b", "a"});
    ASSERT_TRUE(choose(menus.forTile(app("b")), "New folder with 2 apps"));
    EXPECT_EQ(world.onDisk(), "[New folder: a b] [F: x y z]") << "in the order of the grid";
    world.state->endRenaming("Pair");
    EXPECT_THAT(world.state->selected(), IsEmpty());
    world.state->setOpenFolder(uuid(1));
    ASSERT_TRUE(choose(menus.forTile(app("y")), "Move out of folder"));
    EXPECT_EQ(world.onDisk(), "[Pair: a b] [F: x z] y");
    world.state->setOpenFolder(std::nullopt);
    ASSERT_TRUE(choose(menus.forTile(app("y")), "New folder")) << "one app is enough";
    world.state->setOpenFolder(std::nullopt);

    const Tile f = folder(1, "F", {"x", "z"});
    ASSERT_TRUE(choose(menus.forTile(f), "Teal"));
    EXPECT_EQ(world.model->board().folder(uuid(1))->color, "teal");
    ASSERT_TRUE(choose(menus.forTile(f), "Break up folder"));
    EXPECT_EQ(world.onDisk(), "[Pair: a b] x z [New folder: y]");
    ASSERT_TRUE(choose(menus.forTile(app("x")), "Hide"));
    EXPECT_THAT(world.model->board().hidden, ElementsAre("x"));
    ASSERT_TRUE(choose(menus.forBackground(), "Layout history…"));
    EXPECT_EQ(world.state->panel(), LauncherState::Panel::history);
}

TEST(TileMenu, WhatHasNoPlaceOnTheGridIsNeitherMovedNorRenamedInPlace) {
    Arranging world = withFolder();
    const Menu menu = TileMenu(*world.model, *world.state).forTile(app("x")); // in a closed folder
    EXPECT_FALSE(choose(menu, "Rename…"));
    EXPECT_FALSE(choose(menu, "Move to end"));
    for (std::size_t i = 1; i < menu.size(); ++i) {
        EXPECT_FALSE(menu[i].kind == MenuEntry::Kind::separator &&
                     menu[i - 1].kind == menu[i].kind);
    }
    EXPECT_TRUE(choose(menu, "Open"));
    EXPECT_THAT(world.runningApps.asked, ElementsAre("open x"));
}

TEST(TileMenu, OutlivesWhatItIsAbout) {
    Arranging world = withFolder();
    const TileMenu menus(*world.model, *world.state);
    const Menu ofFolder = menus.forTile(folder(1, "F", {"x", "y", "z"}));
    const Menu ofApp = menus.forTile(app("a"));
    for (const char* id : {"a", "x", "y", "z"}) {
        world.catalogue.uninstall(id);
    }
    world.model->rescan();
    const std::string before = world.inMemory();
    for (const char* text : {"Rename…", "Red", "Break up folder", "Move to end", "Emoji…"}) {
        choose(ofFolder, text);
        choose(ofApp, text);
    }
    choose(ofApp, "Open");
    choose(ofApp, "Choose icon…");
    EXPECT_EQ(world.inMemory(), before);
    EXPECT_FALSE(world.state->renaming());
    EXPECT_THAT(world.runningApps.asked, IsEmpty());
}

} // namespace
} // namespace vellory::test
