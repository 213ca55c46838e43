// SPDX-License-Identifier: Apache-2.0
#include "Support/Sqlite.h"

#include <algorithm>
#include <limits>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"
#include "support/TestDatabase.h"

namespace vellory::Sqlite {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using test::TemporaryFolder;
using test::TestDatabase;
using testing::ElementsAre;
using testing::IsEmpty;

fs::path databaseAt(const fs::path& file, const std::string& sql) {
    TestDatabase(file).run(sql);
    return file;
}

/// The first column of all rows; `complete` tells whether they ended by themselves.
std::vector<std::int64_t> numbers(Statement& statement, bool complete = true) {
    std::vector<std::int64_t> out;
    while (statement.step()) {
        out.push_back(statement.integer(0).value_or(-1));
    }
    EXPECT_EQ(statement.isComplete(), complete);
    return out;
}

TEST(Sqlite, OpensAFileWhateverItsPathHolds) {
    const TemporaryFolder folder;
    for (const std::string name :
         {"plain", "two words", "what?mode=rwc", "50%", "50%20", "#1", "a&b=c;d", "\"'\\", "Füße",
          "\xFF\xFE", "new\nline", ":memory:", "file:x"}) {
        const fs::path place = folder.path() / name;
        fs::create_directory(place);
        const fs::path file =
            databaseAt(place / name, "CREATE TABLE t (x); INSERT INTO t VALUES (7)");
        for (const std::string& path : {file.string(), "/" + file.string(), "//" + file.string()}) {
            const auto database = Database::open(path);
            ASSERT_TRUE(database) << path;
            auto statement = database->prepare("SELECT x FROM t");
            ASSERT_TRUE(statement) << path << ": " << statement.error().message;
            EXPECT_THAT(numbers(*statement), ElementsAre(7)) << path;
        }
        EXPECT_THAT(test::namesIn(place), ElementsAre(name));
    }
}

TEST(Sqlite, UriKeepsThePathApartFromTheParameters) {
    EXPECT_EQ(readOnlyUri("/a b/c?d#e%f&ü"),
              "file:/a%20b/c%3Fd%23e%25f%26%C3%BC?mode=ro&immutable=1");
    EXPECT_EQ(readOnlyUri("//host/a"), "file:/%2Fhost/a?mode=ro&immutable=1");
}

TEST(Sqlite, RefusesWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    const fs::path real = databaseAt(folder.path() / "real", "CREATE TABLE t (x)");
    for (const fs::path& path :
         {folder.path() / "missing", folder.path(), folder.path() / "pipe", fs::path("/dev/zero"),
          fs::path(real.string() + '\0' + "more"), fs::path()}) {
        const auto database = Database::open(path);
        ASSERT_FALSE(database) << path;
        EXPECT_EQ(database.error().kind, Error::Kind::cannotOpen) << path;
        EXPECT_FALSE(database.error().message.empty()) << path;
    }
    EXPECT_FALSE(fs::exists(folder.path() / "missing"));
}

TEST(Sqlite, SaysWhyAFileCannotBeQueried) {
    const TemporaryFolder folder;
    const fs::path file = databaseAt(folder.path() / "db", "CREATE TABLE t (x)");
    const std::string good = test::contentOf(file);
    for (const std::string& bytes :
         {std::string(), std::string("no database, but a text that is long enough to be one"),
          std::string(5000, '\0'), good.substr(0, 40), good.substr(0, 100)}) {
        const auto database = Database::open(folder.write("bad", bytes));
        ASSERT_TRUE(database);
        const auto statement = database->prepare("SELECT x FROM t");
        ASSERT_FALSE(statement) << bytes.size();
        EXPECT_EQ(statement.error().kind, Error::Kind::cannotQuery);
        EXPECT_FALSE(statement.error().message.empty());
    }
    EXPECT_EQ(Database::open(file)->prepare("SELECT y FROM t").error().message,
              "no such column: y");
}

TEST(Sqlite, ColumnsTellWhatTheyHold) {
    struct Case {
        const char* literal;
        Statement::Type type;
        std::optional<std::int64_t> integer;
        std::optional<std::string> text;
        std::optional<std::string> bytes;
    };
    using enum Statement::Type;
    const std::vector<Case> cases{
        {"NULL", null, {}, {}, {}},
        {"42", Statement::Type::integer, 42, "42", {}},
        {"-9223372036854775808",
         Statement::Type::integer,
         std::numeric_limits<std::int64_t>::min(),
         "-9223372036854775808",
         {}},
        {"2.9", real, 2, "2.9", {}},
        {"-2.9", real, -2, "-2.9", {}},
        {"9223372036854775807.0", real, {}, "9.22337203685478e+18", {}},
        {"-1e999", real, {}, "-Inf", {}},
        {"''", Statement::Type::text, {}, "", ""},
        {"' 12 '", Statement::Type::text, 12, " 12 ", " 12 "},
        {"'12x'", Statement::Type::text, {}, "12x", "12x"},
        {"'9223372036854775808'",
         Statement::Type::text,
         {},
         "9223372036854775808",
         "9223372036854775808"},
        {"'é'", Statement::Type::text, {}, "é", "é"},
        {"CAST(x'610062' AS TEXT)",
         Statement::Type::text,
         {},
         std::string("a\0b", 3),
         std::string("a\0b", 3)},
        {"CAST(x'41FF' AS TEXT)", Statement::Type::text, {}, "A\xEF\xBF\xBD", "A\xFF"},
        {"x''", blob, {}, "", ""},
        {"x'3132'", blob, {}, "12", "12"},
        {"x'FF00'", blob, {}, std::string("\xEF\xBF\xBD\0", 4), std::string("\xFF\0", 2)},
    };
    const TemporaryFolder folder;
    const auto database = Database::open(databaseAt(folder.path() / "db", "CREATE TABLE t (x)"));
    ASSERT_TRUE(database);
    for (const Case& expected : cases) {
        auto statement = database->prepare(std::string("SELECT ") + expected.literal);
        ASSERT_TRUE(statement && statement->step()) << expected.literal;
        EXPECT_EQ(statement->type(0), expected.type) << expected.literal;
        EXPECT_EQ(statement->bytes(0), expected.bytes) << expected.literal;
        EXPECT_EQ(statement->integer(0), expected.integer) << expected.literal;
        EXPECT_EQ(statement->text(0), expected.text) << expected.literal;
    }
}

TEST(Sqlite, ADatabaseInUseIsReadWithoutATrace) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "db";
    const TestDatabase owner(file);
    owner.run("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0; CREATE TABLE t (x);"
              "INSERT INTO t VALUES (1); PRAGMA wal_checkpoint(TRUNCATE);"
              "INSERT INTO t VALUES (2); BEGIN IMMEDIATE; INSERT INTO t VALUES (3)");
    const auto names = test::namesIn(folder.path());
    const std::string before = test::contentOf(file);
    {
        const auto database = Database::open(file);
        ASSERT_TRUE(database);
        auto statement = database->prepare("SELECT x FROM t");
        ASSERT_TRUE(statement) << statement.error().message;
        EXPECT_THAT(numbers(*statement), ElementsAre(1)); // what has left the log
        for (const char* sql : {"INSERT INTO t VALUES (4)", "DROP TABLE t", "CREATE TABLE u (x)"}) {
            auto change = database->prepare(sql);
            EXPECT_FALSE(change && (change->step() || change->isComplete())) << sql;
        }
    }
    owner.run("COMMIT"); // nobody else holds a lock
    EXPECT_EQ(test::namesIn(folder.path()), names);
    EXPECT_EQ(test::contentOf(file), before);
}

TEST(Sqlite, TablesThatRunCodeAreRefused) {
    const TemporaryFolder folder;
    const std::string filler = "CREATE TABLE data (x); INSERT INTO data VALUES (1), (2);";
    int next = 0;
    const auto readable = [&](const std::string& sql) {
        const auto database =
            Database::open(databaseAt(folder.path() / std::to_string(next++), filler + sql));
        auto statement = database->prepare("SELECT x FROM t");
        return statement ? numbers(*statement, false) : std::vector<std::int64_t>();
    };
    EXPECT_THAT(readable("CREATE VIEW t AS SELECT x FROM data"), IsEmpty());
    EXPECT_THAT(readable("CREATE VIRTUAL TABLE t USING fts5(x); INSERT INTO t VALUES (1)"),
                IsEmpty());
    EXPECT_THAT(readable("CREATE TABLE t (y, x AS (instr(y, 'b'))); INSERT INTO t VALUES ('ab')"),
                IsEmpty());
    // Only who reads such a column is refused.
    const auto database = Database::open(
        databaseAt(folder.path() / "computed", "CREATE TABLE t (x, y AS (substr(x, 1, 2)));"
                                               "CREATE INDEX i ON t (x) WHERE instr(x, 'a') = 0;"
                                               "INSERT INTO t VALUES (5)"));
    auto statement = database->prepare("SELECT x FROM t");
    ASSERT_TRUE(statement) << statement.error().message;
    EXPECT_THAT(numbers(*statement), ElementsAre(5));
    EXPECT_THAT(readable("CREATE TABLE t (y, x AS (y LIKE '%a%b%')); INSERT INTO t VALUES ('ab')"),
                IsEmpty());
}

TEST(Sqlite, ReadingEndsWhenItTakesTooLong) {
    const TemporaryFolder folder;
    const fs::path file = databaseAt(folder.path() / "db", "CREATE TABLE t (x)");
    const std::string endless = "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n) "
                                "SELECT x FROM n WHERE x < 0";
    for (const Limits& limits :
         {Limits{.time = milliseconds(20)}, Limits{.time = std::chrono::hours(1), .memory = 0}}) {
        const auto database = Database::open(file, limits);
        ASSERT_TRUE(database);
        auto statement = database->prepare(endless);
        // Without any time the tables cannot even be looked up.
        if (statement) {
            EXPECT_FALSE(statement->step());
            EXPECT_FALSE(statement->isComplete());
        } else {
            EXPECT_EQ(statement.error().message, "interrupted");
        }
    }
}

TEST(Sqlite, ReadingEndsWhenTheTablesAloneAreTooMany) {
    const TemporaryFolder folder;
    const fs::path file =
        databaseAt(folder.path() / "db",
                   "CREATE TABLE t (x); PRAGMA writable_schema = ON;"
                   "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 20000)"
                   "INSERT INTO sqlite_schema SELECT 'table', 't' || x, 't' || x, 2,"
                   " 'CREATE TABLE t' || x || '(x)' FROM n");
    const auto database = Database::open(file, {.time = std::chrono::hours(1), .memory = 1 << 20});
    ASSERT_TRUE(database);
    const auto statement = database->prepare("SELECT x FROM t");
    ASSERT_FALSE(statement);
    EXPECT_EQ(statement.error().message, "interrupted");
}

TEST(Sqlite, ReadingEndsAtAValueThatIsTooLong) {
    const TemporaryFolder folder;
    const fs::path file = databaseAt(
        folder.path() / "db",
        "CREATE TABLE t (n, x); INSERT INTO t VALUES (1, ''), (2, zeroblob(9000)), (3, '')");
    const auto database = Database::open(file, {.valueBytes = 8000});
    ASSERT_TRUE(database);
    auto statement = database->prepare("SELECT n, x FROM t");
    ASSERT_TRUE(statement);
    EXPECT_THAT(numbers(*statement, false), ElementsAre(1));
}

TEST(Sqlite, DamageAnywhereEndsTheRowsAndNothingElse) {
    const TemporaryFolder folder;
    const fs::path file =
        databaseAt(folder.path() / "db",
                   "PRAGMA page_size = 512; CREATE TABLE t (x, y);"
                   "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 200)"
                   "INSERT INTO t SELECT x, 'some text that fills the pages' FROM n");
    const std::string good = test::contentOf(file);
    std::size_t readable = 0;
    for (std::size_t place = 0; place < good.size(); place += 37) {
        for (const bool isCut : {true, false}) {
            std::string bad = good.substr(0, isCut ? place : good.size());
            if (!isCut) {
                bad[place] = static_cast<char>(~bad[place]);
            }
            const auto database = Database::open(folder.write("bad", bad));
            ASSERT_TRUE(database);
            auto statement = database->prepare("SELECT x, y FROM t");
            std::size_t rows = 0;
            while (statement && statement->step()) {
                statement->text(1);
                ++rows;
            }
            readable += rows > 0 ? 1 : 0;
        }
    }
    EXPECT_GT(readable, 0U);
}

} // namespace
} // namespace vellory::Sqlite
