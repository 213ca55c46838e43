// SPDX-License-Identifier: Apache-2.0
#include "Import/LaunchpadImporter.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "CaseFolders.h"

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

const char* const tables = "CREATE TABLE items (rowid INTEGER PRIMARY KEY, uuid TEXT, type INTEGER,"
                           " parent_id INTEGER, ordering INTEGER);"
                           "CREATE TABLE apps (item_id INTEGER PRIMARY KEY, title, bundleid);"
                           "CREATE TABLE groups (item_id INTEGER PRIMARY KEY, title);";

class LaunchpadCases : public testing::TestWithParam<ImportCase> {};

TEST_P(LaunchpadCases, ComesOutAsTheCaseSays) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    GetParam().makeDatabase(file, tables);
    EXPECT_EQ(test::drawn(importLayout(file), nameOf), GetParam().expected());
}

INSTANTIATE_TEST_SUITE_P(, LaunchpadCases, testing::ValuesIn(test::importCases("launchpad")),
                         test::caseName);

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
    EXPECT_EQ(layout->appCount(), 10'000U);
    std::size_t depth = 0;
    for (const LayoutPage* page = &layout->pages.at(0); page != nullptr;) {
        const auto inner = std::ranges::find_if(*page, &LayoutItem::folder);
        page = inner == page->end() ? nullptr : &inner->folder()->pages.at(0);
        depth += page != nullptr ? 1 : 0;
    }
    EXPECT_EQ(depth, maxNesting);
    EXPECT_EQ(Layout(*layout), *layout); // copied and compared without running out of stack
}

/// What is imported of `count` apps in one place of one page, whose titles the SQL `title` makes.
Layout importedApps(std::size_t count, const std::string& title) {
    const std::string numbers = "WITH RECURSIVE n(x) AS (SELECT 3 UNION ALL SELECT x + 1 FROM n "
                                "LIMIT " +
                                std::to_string(count) + ")";
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    TestDatabase(file).run("PRAGMA synchronous = OFF;" + std::string(tables) +
                           "INSERT INTO items VALUES (1, 'ROOTPAGE', 1, 0, 0), (2, '', 3, 1, 0);" +
                           numbers + "INSERT INTO items SELECT x, '', 4, 2, 0 FROM n;" + numbers +
                           "INSERT INTO apps SELECT x, " + title +
                           ", 'com.example.app' || x FROM n");
    const auto layout = importLayout(file);
    EXPECT_TRUE(layout);
    return layout.value_or(Layout());
}

TEST(LaunchpadImporter, RowsEndAtTheLimits) {
    const Layout many = importedApps(maxRows + 100'000, "NULL");
    EXPECT_GT(many.appCount(), 0U);
    EXPECT_LE(many.appCount(), maxRows);
    EXPECT_EQ(many.pages.at(0).at(0),
              (LayoutItem{LayoutItem::App{"com.example.app3", "com.example.app3"}}));

    const Layout heavy = importedApps(50, "printf('%.*c', 1000000, 'x')");
    EXPECT_GT(heavy.appCount(), 0U);
    EXPECT_LE(heavy.appCount(), maxTextBytes / 1'000'000 + 1);
}

} // namespace
} // namespace vellory::LaunchpadImporter
