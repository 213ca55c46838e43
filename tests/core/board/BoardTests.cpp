// SPDX-License-Identifier: Apache-2.0
#include "Board/Board.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Boards.h"
#include "support/Lists.h"
#include "support/Records.h"

namespace vellory::board_tests {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

/// What most tests start from: "a [Work: b c] d [Solo: e]", the folders being 1 and 2.
Board sample() {
    return board({app("a"), folder(1, "Work", {"b", "c"}), app("d"), folder(2, "Solo", {"e"})});
}

TEST(Board, FindsAppsLooseAndInFolders) {
    const Board grid = sample();
    EXPECT_THAT(grid.allApps(), ElementsAre("a", "b", "c", "d", "e"));
    EXPECT_EQ(grid.locate("d"), (Board::Location{2, std::nullopt}));
    EXPECT_EQ(grid.locate("c"), (Board::Location{1, 1}));
    EXPECT_EQ(grid.locate("x"), std::nullopt);
    EXPECT_EQ(grid.folder(uuid(2))->title, "Solo");
    EXPECT_EQ(grid.folder(uuid(9)), nullptr);
}

TEST(Board, ATileIdMatchesByteByByte) {
    const Board grid = board({folder(0xabcd, "Work", {"b"}), app("folder:x"), app("")});
    EXPECT_EQ(grid.indexOfTile("folder:00000000-0000-0000-0000-00000000ABCD"), 0);
    EXPECT_EQ(grid.tiles[0].id(), "folder:00000000-0000-0000-0000-00000000ABCD");
    EXPECT_EQ(grid.tiles[1].id(), "app:folder:x");
    EXPECT_EQ(grid.indexOfTile("folder:00000000-0000-0000-0000-00000000abcd"), std::nullopt);
    EXPECT_EQ(grid.indexOfTile("app:folder:x"), 1);
    EXPECT_EQ(grid.indexOfTile("app:"), 2);
    for (const char* stranger : {"", "b", "app:b", "folder:", "folder:x"}) {
        EXPECT_EQ(grid.indexOfTile(stranger), std::nullopt) << stranger;
    }
}

TEST(Board, ALayoutPlacesEachAppWhereItIsNamedFirst) {
    const auto item = [](const char* id) { return LayoutItem{LayoutItem::App{id, "title"}}; };
    const LayoutItem nested{LayoutItem::Folder{"Nested", {{item("n")}}}};
    const Layout layout{{
        {item("a"), LayoutItem{LayoutItem::Folder{"Work", {{item("b"), item("a")}, {item("c")}}}}},
        {},
        {LayoutItem{LayoutItem::Folder{"Seen", {{item("a")}, {item("b")}}}}, item("c"), item("d")},
        {LayoutItem{LayoutItem::Folder{"Deep", {{nested, item("e")}}}}, item("n")},
    }};
    const Board made(layout, counting(7));
    EXPECT_EQ(made, board({app("a"), folder(7, "Work", {"b", "c"}), app("d"),
                           folder(8, "Deep", {"e"}), app("n")}));
    // What the import notice counts: every app item, wherever it stands.
    EXPECT_EQ(layout.appCount(), 11);
    EXPECT_EQ(layout.folderCount(), 3);
}

TEST(Board, ReconcileDropsWhatIsGoneAndAppendsWhatIsNew) {
    Board grid = sample();
    grid.tiles[1].folder()->color = "red";
    grid.hidden = {"gone", "a"};
    grid.renames = {{"a", "Alpha"}, {"gone", "Gone"}};
    grid.icons = {{"b", "/b.png"}, {"gone", "/gone.png"}};

    EXPECT_THAT(grid.reconcile({"z", "c", "a", "z", "y"}), ElementsAre("z", "y"));

    Board expected = board({app("a"), folder(1, "Work", {"c"}), app("z"), app("y")});
    expected.tiles[1].folder()->color = "red";
    expected.hidden = {"gone", "a"}; // stays hidden when it is installed again
    expected.renames = {{"a", "Alpha"}};
    EXPECT_EQ(grid, expected);
    EXPECT_THAT(grid.reconcile({"a", "c", "y", "z"}), IsEmpty());
    EXPECT_EQ(grid, expected);

    grid.reconcile({});
    EXPECT_THAT(grid.tiles, IsEmpty());
    EXPECT_THAT(grid.renames, IsEmpty());
    EXPECT_EQ(grid.hidden, expected.hidden);
}

TEST(Board, RemovingTheOnlyAppOfAFolderRemovesTheFolder) {
    Board grid = sample();
    EXPECT_TRUE(grid.remove("e"));
    EXPECT_TRUE(grid.remove("b"));
    EXPECT_FALSE(grid.remove("b"));
    EXPECT_EQ(drawn(grid), "a [Work: c] d");        // one app is left: it stays a folder
    EXPECT_TRUE(grid.remove(*grid.tiles[0].app())); // a name that the board itself lends
    EXPECT_EQ(drawn(grid), "[Work: c] d");
}

struct Move {
    const char* what;
    std::ptrdiff_t index;
    const char* result;
};

TEST(Board, ATileMovesBeforeTheTileThatIsAtTheIndexNow) {
    const Move moves[] = {
        {"app:b", 0, "b a c d"}, {"app:b", 1, "a b c d"},  {"app:b", 2, "a b c d"},
        {"app:b", 3, "a c b d"}, {"app:b", 4, "a c d b"},  {"app:b", 99, "a c d b"},
        {"app:d", 0, "d a b c"}, {"app:c", -5, "c a b d"}, {"app:a", PTRDIFF_MAX, "b c d a"},
        {"b", 0, "a b c d"},     {"app:x", 0, "a b c d"},  {"app:d", PTRDIFF_MIN, "d a b c"},
    };
    for (const auto& [what, index, result] : moves) {
        Board grid = board({app("a"), app("b"), app("c"), app("d")});
        grid.moveTile(what, index);
        EXPECT_EQ(drawn(grid), result) << what << " to " << index;
    }
}

TEST(Board, AnAppMovesOutOfItsFolderBeforeTheTileThatIsAtTheIndexNow) {
    const Move moves[] = {
        {"b", 0, "b a [Work: c] d [Solo: e]"}, {"c", 2, "a [Work: b] c d [Solo: e]"},
        {"c", 9, "a [Work: b] d [Solo: e] c"}, {"e", 0, "e a [Work: b c] d"},
        {"e", 3, "a [Work: b c] d e"},         {"e", 4, "a [Work: b c] d e"},
        {"a", 3, "[Work: b c] d a [Solo: e]"}, {"d", -1, "d a [Work: b c] [Solo: e]"},
        {"x", 0, "a [Work: b c] d [Solo: e]"},
    };
    for (const auto& [what, index, result] : moves) {
        Board grid = sample();
        grid.moveAppToTopLevel(what, index);
        EXPECT_EQ(drawn(grid), result) << what << " to " << index;
    }
}

TEST(Board, DroppingAnAppMakesOrFillsAFolder) {
    const std::string work = folder(1, "", {}).id();
    const std::string solo = folder(2, "", {}).id();
    struct Case {
        const char* app;
        std::string onto;
        std::optional<Uuid> folder;
        const char* result;
    };
    const Case cases[] = {
        {"a", "app:a", std::nullopt, "a [Work: b c] d [Solo: e]"},
        {"a", "app:x", std::nullopt, "a [Work: b c] d [Solo: e]"},
        {"a", "app:b", std::nullopt, "a [Work: b c] d [Solo: e]"}, // b is in a folder: no tile
        {"a", "app:d", uuid(7), "[Work: b c] [New: d a] [Solo: e]"},
        {"a", work, uuid(1), "[Work: b c a] d [Solo: e]"},
        {"b", work, uuid(1), "a [Work: c b] d [Solo: e]"},
        {"e", work, uuid(1), "a [Work: b c e] d"},
        {"e", "app:a", uuid(7), "[New: a e] [Work: b c] d"},
        {"new", "app:a", uuid(7), "[New: a new] [Work: b c] d [Solo: e]"},
        {"e", solo, std::nullopt, "a [Work: b c] d [Solo: e]"}, // its only app: not lost with it
    };
    for (const Case& drop : cases) {
        Board grid = sample();
        EXPECT_EQ(grid.drop(drop.app, drop.onto, "New", counting(7)), drop.folder)
            << drop.app << " onto " << drop.onto;
        EXPECT_EQ(drawn(grid), drop.result) << drop.app << " onto " << drop.onto;
    }
}

TEST(Board, AFolderOfSeveralAppsStandsWhereTheFirstOfThemStood) {
    struct Case {
        std::vector<BundleID> apps;
        const char* result;
    };
    const Case cases[] = {
        {{"d", "a"}, "[Work: b c] [New: d a] [Solo: e]"},
        {{"a", "d"}, "[New: a d] [Work: b c] [Solo: e]"},
        {{"c", "x", "a", "c"}, "[New: c a] [Work: b] d [Solo: e]"},
        {{"e", "d", "b", "c"}, "a [New: e d b c]"},
        {{"e"}, "a [Work: b c] d [New: e]"},
        {{"a", "b", "c", "d", "e"}, "[New: a b c d e]"},
    };
    for (const auto& [apps, result] : cases) {
        Board grid = sample();
        EXPECT_EQ(grid.makeFolder(apps, "New", counting(7)), uuid(7));
        EXPECT_EQ(drawn(grid), result);
    }
    Board grid = sample();
    EXPECT_EQ(grid.makeFolder({"x", "y"}, "New", counting(7)), std::nullopt);
    EXPECT_EQ(grid.makeFolder({}, "New", counting(7)), std::nullopt);
    EXPECT_EQ(grid, sample());
    // The list may be the board's own.
    EXPECT_EQ(grid.makeFolder(grid.tiles[1].folder()->apps, "New", counting(7)), uuid(7));
    EXPECT_EQ(drawn(grid), "a [New: b c] d [Solo: e]");
}

TEST(Board, EditingAFolderKeepsItsIdentityAndTheInvariants) {
    Board grid = sample();
    grid.updateFolder(uuid(1), [](Folder& edited) {
        edited.id = uuid(99);
        edited.title = "Play";
        edited.emoji = "🎈";
        edited.apps = {"c", "a", "c", "f"}; // a stands loose, c is named twice, f is new
    });
    EXPECT_EQ(drawn(grid), "a [Play: c f] d [Solo: e]");
    EXPECT_EQ(grid.folder(uuid(1))->emoji, "🎈");
    grid.updateFolder(uuid(2), [](Folder& edited) { edited.apps.clear(); });
    grid.updateFolder(uuid(9), [](Folder& edited) { edited.title = "None"; });
    EXPECT_EQ(drawn(grid), "a [Play: c f] d");
}

TEST(Board, DissolvedFoldersLeaveTheirAppsInPlace) {
    Board grid = sample();
    grid.dissolveFolder(uuid(9));
    EXPECT_EQ(grid, sample());
    grid.dissolveFolder(uuid(1));
    EXPECT_EQ(drawn(grid), "a b c d [Solo: e]");
    grid = sample();
    grid.dissolveAll();
    EXPECT_EQ(drawn(grid), "a b c d e");
}

TEST(Board, SortsByNameWithDigitsAsNumbersAndWithoutRegardToCase) {
    const std::map<BundleID, std::string> names{
        {"a10", "App 10"}, {"a2", "app 2"}, {"same1", "Éclair"}, {"same2", "éclair"}, {"z", "Zoo"}};
    Board grid = board({app("z"), app("same2"), app("a10"), folder(1, "dir", {"y", "x"}),
                        app("same1"), app("a2")});
    grid.sortBy([&](const BundleID& id) { return names.at(id); }, Text::Collator("en"));
    EXPECT_EQ(drawn(grid), "a2 a10 [dir: y x] same2 same1 z");
}

TEST(Board, SortsByUseWithAFolderAsGoodAsItsMostUsedApp) {
    const std::map<BundleID, std::int64_t> counts{{"a", 3}, {"b", 0}, {"c", 9}, {"d", 3}};
    Board grid = board({app("b"), app("a"), folder(1, "Work", {"b2", "c"}), app("d"),
                        folder(2, "Unused", {"b3"})});
    grid.sortByUse([&](const BundleID& id) {
        const auto found = counts.find(id);
        return found == counts.end() ? 0 : found->second;
    });
    EXPECT_EQ(drawn(grid), "[Work: b2 c] a d b [Unused: b3]");
}

const char* const stored =
    R"({"hidden":["h","z"],"icons":{},"renames":{"a":"Alpha"},"tiles":[{"app":{"_0":"a\"b"}},)"
    R"({"folder":{"_0":{"apps":["c"],"cover":"/c.png",)"
    R"("id":"00000000-0000-0000-0000-000000000001","title":"Büro"}}}]})";

TEST(Board, IsStoredWithSortedKeysAndWithoutAbsentFields) {
    Board grid = board({app("a\"b"), folder(1, "Büro", {"c"})});
    grid.tiles[1].folder()->cover = "/c.png";
    grid.hidden = {"z", "h"};
    grid.renames = {{"a", "Alpha"}};
    EXPECT_EQ(json::encode(grid, json::Style::compact), stored);
    EXPECT_EQ(json::decode<Board>(stored), grid);
    EXPECT_EQ(json::decode<Board>(R"({"tiles":[]})"), Board());
}

TEST(Board, RefusesFilesOfAnotherShape) {
    expectStrictReading<Board>(stored, {"hidden", "icons", "renames", "cover"}, {"renames"});
    EXPECT_FALSE(
        json::decode<Board>(changed(stored, R"({"_0":"a\"b"})", R"({"_0":"a"},"folder":{})")));
    EXPECT_TRUE(
        json::decode<Board>(changed(stored, R"({"_0":"a\"b"})", R"({"_0":"a","later":1})")));
}

TEST(Layout, IsStoredLikeABoardCaseByCase) {
    const std::string text =
        R"({"pages":[[{"app":{"bundleID":"a","title":"A"}},)"
        R"({"folder":{"pages":[[],[{"app":{"bundleID":"b","title":"B"}}]],"title":"F"}}],[]]})";
    const auto layout = json::decode<Layout>(text);
    ASSERT_TRUE(layout);
    EXPECT_EQ(json::encode(*layout, json::Style::compact), text);
    EXPECT_EQ(layout->appCount(), 2);
    expectStrictReading<Layout>(text);
}

} // namespace
} // namespace vellory::board_tests
