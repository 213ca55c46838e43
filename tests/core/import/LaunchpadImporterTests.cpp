// SPDX-License-Identifier: Apache-2.0
#include "Import/LaunchpadImporter.h"

#include <gmock/gmock.h>

#include "CaseFolders.h"
#include "support/TestDatabase.h"

namespace vellory::LaunchpadImporter {
namespace {

namespace fs = std::filesystem;
using test::ImportCase;
using test::TemporaryFolder;
using test::TestDatabase;

std::string nameOf(ImportError::Kind kind) {
    switch (kind) {
    case ImportError::Kind::notFound:
        return "notFound";
    case ImportError::Kind::unreadable:
        return "unreadable";
    case ImportError::Kind::noRoot:
        break;
    }
    return "noRoot";
}

class LaunchpadCases : public testing::TestWithParam<ImportCase> {};

TEST_P(LaunchpadCases, ComesOutAsTheCaseSays) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    TestDatabase(file).run(test::contentOf(GetParam().input()));
    test::expectOutcome(GetParam(), importLayout(file), nameOf);
}

INSTANTIATE_TEST_SUITE_P(, LaunchpadCases, testing::ValuesIn(test::importCases("launchpad")),
                         test::caseName);

const char* const tables = "CREATE TABLE items (rowid INTEGER PRIMARY KEY, uuid TEXT, type INTEGER,"
                           " parent_id INTEGER, ordering INTEGER);"
                           "CREATE TABLE apps (item_id INTEGER PRIMARY KEY, title, bundleid);"
                           "CREATE TABLE groups (item_id INTEGER PRIMARY KEY, title);"
                           "INSERT INTO items VALUES (1, 'ROOTPAGE', 1, 0, 0), (2, '', 3, 1, 0);";

/// SQL that makes rows from `first` on, each from its number x.
std::string manyRows(int first, int count, const std::string& values, const std::string& table) {
    return "WITH RECURSIVE n(x) AS (SELECT " + std::to_string(first) +
           " UNION ALL SELECT x + 1 FROM n LIMIT " + std::to_string(count) + ") INSERT INTO " +
           table + " SELECT " + values + " FROM n;";
}

TEST(LaunchpadImporter, DatabaseLiesInTheUsersTemporaryFolder) {
    EXPECT_EQ(defaultDatabaseURL("/var/folders/ab/0/"),
              fs::path("/var/folders/ab/0/com.apple.dock.launchpad/db/db"));
    EXPECT_EQ(defaultDatabaseURL(std::nullopt), std::nullopt);
    EXPECT_EQ(defaultDatabaseURL(fs::path()), std::nullopt);
}

TEST(LaunchpadImporter, ErrorsSayWhatTheyAreAbout) {
    const TemporaryFolder folder;
    const fs::path missing = folder.path() / "no db";
    EXPECT_EQ(importLayout(missing).error(),
              (ImportError{ImportError::Kind::notFound, missing.string()}));
    EXPECT_EQ(importLayout(folder.path()).error(),
              (ImportError{ImportError::Kind::unreadable, folder.path().string()}));
    EXPECT_EQ(importLayout(folder.write("text", std::string(2000, 'x'))).error(),
              (ImportError{ImportError::Kind::unreadable, "file is not a database"}));
}

TEST(LaunchpadImporter, EveryRowIsReadInTheDatabasesOrder) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    TestDatabase(file).run(std::string(tables) +
                           "INSERT INTO items VALUES (9, NULL, 4, 2, -3);"
                           "INSERT INTO apps VALUES (9, 'A', 'com.example.a');"
                           "INSERT INTO items VALUES (5, 'f', 2, 2, 1);"
                           "INSERT INTO groups VALUES (5, 'F');");
    const auto database = Sqlite::Database::open(file);
    ASSERT_TRUE(database);
    const auto rows = readItems(*database);
    ASSERT_TRUE(rows);
    EXPECT_THAT(*rows, testing::ElementsAre(Row{1, "ROOTPAGE", 1, 0, 0, std::nullopt, std::nullopt},
                                            Row{2, "", 3, 1, 0, std::nullopt, std::nullopt},
                                            Row{5, "f", 2, 2, 1, "F", std::nullopt},
                                            Row{9, "", 4, 2, -3, "A", "com.example.a"}));
}

TEST(LaunchpadImporter, FoldersTenThousandDeepLoseNoApp) {
    // Folder, page, folder, page … below page 2; one app on every page.
    std::vector<Row> rows{{.id = 1, .uuid = "ROOTPAGE", .type = Type::root},
                          {.id = 2, .type = Type::page, .parent = 1}};
    for (std::int64_t i = 3; i < 20'003; i += 2) {
        rows.push_back({.id = i, .type = Type::folder, .parent = i - 1});
        rows.push_back({.id = i + 1, .type = Type::page, .parent = i});
        rows.push_back({.id = 100'000 + i, .type = Type::app, .parent = i + 1, .bundleID = "app"});
    }
    const auto layout = layoutFrom(rows);
    ASSERT_TRUE(layout);
    std::size_t depth = 0;
    std::size_t apps = 0;
    const LayoutPage* page = &layout->pages.at(0);
    while (page != nullptr) {
        const LayoutPage* next = nullptr;
        for (const LayoutItem& item : *page) {
            apps += item.app() != nullptr ? 1 : 0;
            if (const auto* inner = item.folder()) {
                next = &inner->pages.at(0);
                ++depth;
            }
        }
        page = next;
    }
    EXPECT_EQ(apps, 10'000U);
    EXPECT_EQ(depth, maxNesting);
    EXPECT_EQ(Layout(*layout), *layout); // copied and compared without running out of stack
}

TEST(LaunchpadImporter, RowsEndAtTheLimit) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    constexpr auto most = static_cast<int>(maxRows);
    TestDatabase(file).run(std::string("PRAGMA synchronous = OFF;") + tables +
                           manyRows(3, most + 100'000, "x, '', 4, 2, x", "items") +
                           manyRows(3, most + 100'000, "x, NULL, 'com.example.app' || x", "apps"));
    const auto layout = importLayout(file);
    ASSERT_TRUE(layout);
    EXPECT_GT(layout->appCount(), 0U);
    EXPECT_LE(layout->appCount(), maxRows);
    EXPECT_EQ(layout->pages.at(0).at(0),
              (LayoutItem{LayoutItem::App{"com.example.app3", "com.example.app3"}}));
}

TEST(LaunchpadImporter, LongTextsEndTheRowsAtTheLimit) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    constexpr int length = 1'000'000;
    TestDatabase(file).run(
        std::string("PRAGMA synchronous = OFF;") + tables +
        manyRows(3, 50, "x, '', 4, 2, x", "items") +
        manyRows(3, 50,
                 "x, printf('%.*c', " + std::to_string(length) + ", 'x'), 'com.example.app' || x",
                 "apps"));
    const auto layout = importLayout(file);
    ASSERT_TRUE(layout);
    EXPECT_GT(layout->appCount(), 0U);
    EXPECT_LE(layout->appCount(), maxTextBytes / length + 1);
}

} // namespace
} // namespace vellory::LaunchpadImporter
