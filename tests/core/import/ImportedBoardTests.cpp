// SPDX-License-Identifier: Apache-2.0
#include "Import/ImportedBoard.h"

#include <gtest/gtest.h>

#include "Import/ImportTexts.h"
#include "support/Boards.h"

namespace vellory::import_tests {
namespace {

using test::app;
using test::counting;
using test::drawn;
using test::folder;

LayoutItem item(const std::string& id) {
    return {LayoutItem::App{id, "Title of " + id}};
}

Layout sample() {
    return {{{item("a"), {LayoutItem::Folder{"Work", {{item("b")}, {item("c"), item("a")}}}}},
             {item("d"), item("gone")}}};
}

TEST(ImportedBoard, TakesTheGridAndKeepsWhatTheLayoutDoesNotKnow) {
    Board current = test::board({app("x"), app("a")});
    current.hidden = {"b", "gone"};
    current.renames = {{"a", "Mine"}, {"gone", "Old"}};
    current.icons = {{"c", "/icon.png"}};
    const Board board = importedBoard(sample(), current, {"x", "a", "b", "c", "d"}, counting(1));
    EXPECT_EQ(drawn(board), "a [Work: b c] d x");
    EXPECT_EQ(board.hidden, current.hidden);
    EXPECT_EQ(board.renames, (std::map<BundleID, std::string>{{"a", "Mine"}}));
    EXPECT_EQ(board.icons, current.icons);
}

TEST(ImportedBoard, ImportingTheSameAgainChangesNothing) {
    const std::vector<BundleID> installed{"a", "b", "c", "d"};
    Board current = test::board({app("a"), folder(77, "Work", {"b", "c"}), app("d")});
    current.tiles[1].folder()->color = "red";
    EXPECT_EQ(importedBoard(sample(), current, installed, counting(1)), current);

    Board otherTitle = current;
    otherTitle.tiles[1].folder()->title = "Play";
    Board otherApps = current;
    otherApps.tiles[1].folder()->apps = {"c", "b"};
    Board otherOrder = current;
    std::swap(otherOrder.tiles[0], otherOrder.tiles[2]);
    for (const Board& other : {otherTitle, otherApps, otherOrder, Board()}) {
        const Board board = importedBoard(sample(), other, installed, counting(1));
        EXPECT_EQ(drawn(board), "a [Work: b c] d");
        EXPECT_EQ(board.tiles[1].folder()->id, test::uuid(1));
    }
}

TEST(ImportTexts, NoticeCountsAppsInFoldersToo) {
    EXPECT_EQ(ImportTexts::notice(sample(), "LaunchNext"),
              "Imported 6 apps and 1 folders from LaunchNext");
}

TEST(ImportTexts, AlertsNameTheLauncher) {
    using LaunchpadImporter::ImportError;
    EXPECT_EQ(ImportTexts::launchpadFailed({ImportError::Kind::notFound, "/db"}).title,
              "No Launchpad layout on this Mac");
    for (const auto kind : {ImportError::Kind::unreadable, ImportError::Kind::noRoot}) {
        EXPECT_EQ(ImportTexts::launchpadFailed({kind, "why"}).title,
                  "Couldn't read the Launchpad layout");
    }
    EXPECT_EQ(ImportTexts::sourceFailed(RivalImport::Source::buho).title,
              "Couldn't import from BuhoLaunchpad");
}

} // namespace
} // namespace vellory::import_tests
