// SPDX-License-Identifier: Apache-2.0
#include "Board/BoardStore.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Board/VelloryPaths.h"
#include "support/Boards.h"
#include "support/Child.h"
#include "support/Lists.h"
#include "support/TemporaryFolder.h"

namespace vellory::board_tests {
namespace {

namespace fs = std::filesystem;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t start = 1'700'000'000'123; // milliseconds since 1970

/// A board file and its history in a folder of their own, with a clock that only the test moves.
struct BoardStoreTest : testing::Test {
    TemporaryFolder folder;
    VelloryPaths paths{folder.path()};
    std::int64_t milliseconds = start;
    BoardStore store{paths.layout(), paths.layoutHistory(), BoardStore::defaultKeep, [this] {
                         return Date::since1970(static_cast<double>(milliseconds) / 1000.0);
                     }};

    /// Saves a board with the app `id` only, a minute after the save before.
    void change(const std::string& id, std::optional<std::string_view> reason) {
        milliseconds += 60'000;
        ASSERT_TRUE(store.save(board({app(id)}), reason));
    }

    std::error_code saveError(const Board& grid, std::optional<std::string_view> reason = {}) {
        const auto saved = store.save(grid, reason);
        return saved ? std::error_code() : saved.error();
    }

    /// Sets the rights of the board's folders.
    void permit(fs::perms rights) const {
        for (const auto& place : {folder.path(), paths.support(), paths.layoutHistory()}) {
            if (fs::exists(place)) {
                fs::permissions(place, rights);
            }
        }
    }

    std::string layout() const { return contentOf(paths.layout()); }

    std::vector<std::string> history() const {
        return fs::exists(paths.layoutHistory()) ? namesIn(paths.layoutHistory())
                                                 : std::vector<std::string>();
    }
};

TEST(VelloryPaths, AllMoveWithTheOverride) {
    EXPECT_EQ(VelloryPaths("/data").layout(), "/data/vellory/layout.json");
    const VelloryPaths scratch("/data", "/scratch");
    EXPECT_EQ(scratch.layoutHistory(), "/scratch/LayoutHistory");
    EXPECT_EQ(scratch.desk(), "/scratch/DeskHistory");
}

TEST_F(BoardStoreTest, OnlyAChangeWithAReasonGrowsTheHistory) {
    EXPECT_EQ(store.load(), std::nullopt);
    EXPECT_EQ(store.read(), std::unexpected(BoardStore::ReadError::missing));
    change("a", "Moved"); // the first save: nothing was there before
    change("b", std::nullopt);
    change("b", "Moved"); // the very same board
    EXPECT_THAT(namesIn(paths.support()), ElementsAre("layout.json"));
    change("c", "Moved");
    EXPECT_THAT(history(), ElementsAre("1700000240123_Moved.json"));
    EXPECT_EQ(store.load(), board({app("c")}));
    const auto entries = store.snapshots();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(store.boardIn(entries[0]), board({app("b")}));
    EXPECT_EQ(entries[0].reason, "Moved");
    EXPECT_NEAR(entries[0].date.secondsSince1970(), 1'700'000'240.123, 1e-4);
}

TEST_F(BoardStoreTest, TheHistoryHoldsTheFileAsItStood) {
    const std::string byHand = "{ \"tiles\" : [ ],\r\n \"mine\" : 1 }\n";
    folder.write("vellory/layout.json", byHand);
    change("a", "Moved");
    EXPECT_EQ(contentOf(store.snapshots().at(0).url), byHand);
}

TEST_F(BoardStoreTest, KeepsTheNewestSixtyAndNoStranger) {
    folder.write("vellory/LayoutHistory/notes.json", "");
    for (int i = 0; i <= 60; ++i) { // the first save has no history
        change("app" + std::to_string(i), "Moved");
    }
    const auto sixty = store.snapshots();
    ASSERT_EQ(sixty.size(), 60);
    change("last", "Moved");
    const auto after = store.snapshots();
    ASSERT_EQ(after.size(), 60);
    EXPECT_EQ(after[1], sixty[0]);
    EXPECT_EQ(after.back(), sixty[58]);
    EXPECT_TRUE(std::ranges::is_sorted(after, std::ranges::greater{}, &BoardStore::Snapshot::date));
    EXPECT_EQ(history().size(), 61);
}

TEST_F(BoardStoreTest, AReasonBecomesAPartOfAFileName) {
    const std::string family = "👨‍👩‍👧‍👦"; // one character of 25 bytes
    const std::pair<std::string, std::string> reasons[] = {
        {"Hid a/b c", "Hid_a-b_c"},
        {"Sorted A–Z", "Sorted_A–Z"},
        {"", ""},
        {std::string(100, 'x'), std::string(60, 'x')},
        {"../../etc/x", "..-..-etc-x"},
        {std::string("a\0b\nc", 5), "a_b_c"},
        {"a_b.c: d", "a_b.c:_d"},
        {"bad \xff", "bad_\uFFFD"},
        {test::repeated(family, 100), test::repeated(family, 8)}, // as many as a file name can hold
    };
    change("first", std::nullopt);
    for (const auto& [reason, part] : reasons) {
        change(reason, reason);
        EXPECT_EQ(store.snapshots().at(0).reason, part) << reason;
    }
    EXPECT_EQ(store.snapshots().size(), std::size(reasons));
}

TEST_F(BoardStoreTest, ChangesWithinOneMillisecondAreAllKeptInOrder) {
    for (const char* id : {"a", "b", "c", "d"}) {
        ASSERT_TRUE(store.save(board({app(id)}), "Moved"));
    }
    const auto boardIn = [&](const auto& entry) { return drawn(store.boardIn(entry).value()); };
    EXPECT_THAT(each(store.snapshots(), boardIn), ElementsAre("c", "b", "a"));
    EXPECT_THAT(history(), ElementsAre("1700000000123_Moved.json", "1700000000124_Moved.json",
                                       "1700000000125_Moved.json"));
}

TEST_F(BoardStoreTest, HistoryNamesAreReadByTheirNumberAndStrangersPassedOver) {
    for (const char* name :
         {"999999999999_Old.json", "1000000000000_New_name_x.json", "1500.5_Half.json", "7_.json",
          "notes.txt", "5_Moved.txt", "5.json", "_Moved.json", "x5_Moved.json", "5x_Moved.json",
          " 5_Moved.json", "+5_Moved.json", "0x5_Moved.json", "nan_Moved.json", "inf_Moved.json",
          "1e999_Moved.json", ".json", "5_Moved.JSON", "5_Moved.json.bak"}) {
        folder.write(fs::path("vellory/LayoutHistory") / name, "{\"tiles\": []}");
    }
    folder.write("vellory/LayoutHistory/1e300_Never.json", "{\"tiles\": []}");
    fs::create_directories(paths.layoutHistory() / "9_Folder.json" / "inside");
    fs::create_symlink("/nowhere", paths.layoutHistory() / "8_Link.json");
    EXPECT_THAT(each(store.snapshots(), &BoardStore::Snapshot::reason),
                ElementsAre("New_name_x", "Old", "Half", ""));
    EXPECT_EQ(store.snapshots()[1].date, Date::since1970(999'999'999.999));
}

TEST_F(BoardStoreTest, AHistoryFileThatWentBadGivesNoBoard) {
    folder.write("vellory/LayoutHistory/1_a.json", "{\"tiles\": [");
    BoardStore::Snapshot entry = store.snapshots().at(0);
    EXPECT_EQ(store.boardIn(entry), std::nullopt);
    entry.url = folder.path() / "gone.json";
    EXPECT_EQ(store.boardIn(entry), std::nullopt);
}

TEST_F(BoardStoreTest, AFileThatIsNoBoardReadsAsNothingAndIsKeptBeside) {
    for (const char* text : {"", "{\"tiles\": [", "[]"}) {
        folder.write("vellory/layout.json", text);
        EXPECT_EQ(store.read(), std::unexpected(BoardStore::ReadError::unreadable)) << text;
        EXPECT_EQ(store.load(), std::nullopt) << text;
        EXPECT_EQ(layout(), text); // reading changes nothing
    }
    EXPECT_THAT(namesIn(paths.support()), ElementsAre("layout.json"));

    folder.write("vellory/layout.json", "first");
    change("a", std::nullopt);
    EXPECT_EQ(store.load(), board({app("a")}));
    folder.write("vellory/layout.json", "second");
    change("b", "Moved"); // the history keeps this one
    EXPECT_EQ(contentOf(paths.support() / "layout.json.unreadable"), "first");
    EXPECT_EQ(contentOf(store.snapshots().at(0).url), "second");
    folder.write("vellory/layout.json", "third");
    change("c", std::nullopt); // nothing else would hold this one
    EXPECT_EQ(contentOf(paths.support() / "layout.json.3.unreadable"), "third");
}

TEST_F(BoardStoreTest, AFileThatMayNotBeReadIsKeptBeside) {
    folder.write("vellory/layout.json", "secret");
    fs::permissions(paths.layout(), fs::perms::none);
    permit(fs::perms::all);
    const int saved = inChild([&] {
        // Only a file of one's own can be given a second name without reading it.
        const bool isOurs = ::geteuid() != 0 || ::chown(paths.layout().c_str(), 65534, 65534) == 0;
        return isOurs && becomeNobody() &&
               store.read() == std::unexpected(BoardStore::ReadError::unreadable) &&
               !saveError(board({app("a")}));
    });
    EXPECT_EQ(saved, true);
    fs::permissions(paths.support() / "layout.json.unreadable", fs::perms::owner_read);
    EXPECT_EQ(contentOf(paths.support() / "layout.json.unreadable"), "secret");
}

TEST_F(BoardStoreTest, AFailedSaveLeavesEverythingAsItWas) {
    change("a", std::nullopt);
    const std::string before = layout();
    const Board large = board({app(std::string(100'000, 'x'))});

    const int fullDisk = inChild([&] {
        return limitFileSize(10'000) && saveError(large, "Moved") == std::errc::file_too_large;
    });
    EXPECT_EQ(fullDisk, true);
    EXPECT_EQ(layout(), before);
    EXPECT_THAT(namesIn(paths.support()), ElementsAre("LayoutHistory", "layout.json"));
    EXPECT_THAT(history(), IsEmpty()); // else tries that fail would push the history out

    fs::remove_all(paths.layoutHistory());
    folder.write("vellory/LayoutHistory", "a file in the folder's place");
    EXPECT_FALSE(store.save(large, "Moved"));
    EXPECT_EQ(layout(), before);

    BoardStore nowhere(paths.layout() / "layout.json", paths.layoutHistory(), 60,
                       [] { return Date{}; });
    EXPECT_EQ(nowhere.save(large).error(), std::errc::not_a_directory);
}

TEST_F(BoardStoreTest, AFolderThatMayNotBeWrittenIsReportedAndTheHistoryStays) {
    change("a", std::nullopt);
    change("b", "Moved");
    const std::string before = layout();
    permit(fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
           fs::perms::others_exec);
    fs::permissions(paths.layout(), fs::perms::all);
    const int refused = inChild([&] {
        milliseconds += 60'000;
        return becomeNobody() && saveError(board({app("c")})) == std::errc::permission_denied &&
               saveError(board({app("c")}), "Moved") == std::errc::permission_denied;
    });
    permit(fs::perms::owner_all);
    EXPECT_EQ(refused, true);
    EXPECT_EQ(layout(), before);
    EXPECT_EQ(history().size(), 1);
}

TEST_F(BoardStoreTest, AWholeSetupIsStoredUnderItsVersion) {
    BoardStore::Backup backup;
    backup.board = board({app("a")});
    Workspace& workspace = backup.workspaces.emplace_back();
    workspace.id = uuid(3);
    workspace.name = "Writing";
    workspace.focusGrid = true;
    const std::string text = json::encode(backup, json::Style::compact);
    EXPECT_EQ(text,
              R"({"board":{"hidden":[],"icons":{},"renames":{},"tiles":[{"app":{"_0":"a"}}]},)"
              R"("version":1,"workspaces":[{"focusGrid":true,)"
              R"("id":"00000000-0000-0000-0000-000000000003","items":[],"name":"Writing",)"
              R"("others":"keep","symbol":"","triggers":[],"windows":[]}]})");
    EXPECT_EQ(json::decode<BoardStore::Backup>(text), backup);
    EXPECT_FALSE(json::decode<BoardStore::Backup>(R"({"version":1,"board":{"tiles":[]}})"));
}

} // namespace
} // namespace vellory::board_tests
