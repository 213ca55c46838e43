// SPDX-License-Identifier: Apache-2.0
#include "Support/Sqlite.h"

#include <cstdint>
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

struct Rows {
    std::vector<std::int64_t> numbers; ///< the first column
    bool areComplete = false;          ///< whether they ended by themselves
    std::string error;                 ///< why the query cannot be run
};

Rows rowsOf(const fs::path& file, const Limits& limits = {},
            const std::string& query = "SELECT x FROM t") {
    const auto database = Database::open(file, limits);
    auto statement = database ? database->prepare(query) : std::unexpected(database.error());
    if (!statement) {
        return {{}, false, statement.error().message};
    }
    Rows out;
    while (statement->step()) {
        out.numbers.push_back(statement->integer(0).value_or(-1));
    }
    out.areComplete = statement->isComplete();
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
            EXPECT_THAT(rowsOf(path).numbers, ElementsAre(7)) << path;
        }
        EXPECT_THAT(test::namesIn(place), ElementsAre(name));
    }
    EXPECT_EQ(readOnlyUri("//host/é"), "file:/%2Fhost/%C3%A9?mode=ro&immutable=1");
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
    EXPECT_EQ(rowsOf(file, {}, "SELECT y FROM t").error, "no such column: y");
}

TEST(Sqlite, ColumnsTellWhatTheyHold) {
    using Type = Statement::Type;
    using namespace std::string_literals;
    struct Case {
        const char* literal;
        Type type;
        std::optional<std::int64_t> integer;
        std::optional<std::string> text;
        std::optional<std::string> bytes;
    };
    const Case cases[] = {
        {"NULL", Type::null, {}, {}, {}},
        {"42", Type::integer, 42, "42", {}},
        {"-9223372036854775808", Type::integer, INT64_MIN, "-9223372036854775808", {}},
        {"2.9", Type::real, 2, "2.9", {}},
        {"-2.9", Type::real, -2, "-2.9", {}},
        {"9223372036854775807.0", Type::real, {}, "9.22337203685478e+18", {}},
        {"-1e999", Type::real, {}, "-Inf", {}},
        {"''", Type::text, {}, "", ""},
        {"' 12 '", Type::text, 12, " 12 ", " 12 "},
        {"'12x'", Type::text, {}, "12x", "12x"},
        {"'9223372036854775808'", Type::text, {}, "9223372036854775808", "9223372036854775808"},
        {"CAST(x'610062' AS TEXT)", Type::text, {}, "a\0b"s, "a\0b"s},
        {"CAST(x'41FF' AS TEXT)", Type::text, {}, "A\uFFFD", "A\xFF"},
        {"x''", Type::blob, {}, "", ""},
        {"x'3132'", Type::blob, {}, "12", "12"},
        {"x'FF00'", Type::blob, {}, "\uFFFD\0"s, "\xFF\0"s},
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
    EXPECT_THAT(rowsOf(file).numbers, ElementsAre(1)); // what has left the log
    {
        const auto database = Database::open(file);
        ASSERT_TRUE(database);
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
    const std::pair<const char*, std::vector<std::int64_t>> cases[] = {
        {"CREATE VIEW t AS SELECT x FROM data", {}},
        {"CREATE VIRTUAL TABLE t USING fts5(x); INSERT INTO t VALUES (1)", {}},
        {"CREATE TABLE t (y, x AS (instr(y, 'b'))); INSERT INTO t VALUES ('ab')", {}},
        {"CREATE TABLE t (y, x AS (y LIKE '%a%b%')); INSERT INTO t VALUES ('ab')", {}},
        // Only who reads such a column is refused.
        {"CREATE TABLE t (x, y AS (substr(x, 1, 2))); CREATE INDEX i ON t (x) WHERE"
         " instr(x, 'a') = 0; INSERT INTO t VALUES (5)",
         {5}},
    };
    int number = 0;
    for (const auto& [sql, expected] : cases) {
        const fs::path file = databaseAt(
            folder.path() / std::to_string(++number),
            std::string("CREATE TABLE data (x); INSERT INTO data VALUES (1), (2);") + sql);
        const Rows rows = rowsOf(file);
        EXPECT_EQ(rows.numbers, expected) << sql;
        EXPECT_EQ(rows.areComplete, !expected.empty()) << sql;
    }
}

TEST(Sqlite, ReadingEndsAtEachLimit) {
    const TemporaryFolder folder;
    const std::string count = "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n";
    const fs::path small = databaseAt(folder.path() / "small", "CREATE TABLE t (x)");
    for (const Limits& limits :
         {Limits{.time = milliseconds(20)}, Limits{.time = std::chrono::hours(1), .memory = 0}}) {
        const Rows rows = rowsOf(small, limits, count + ") SELECT x FROM n WHERE x < 0");
        EXPECT_THAT(rows.numbers, IsEmpty());
        // Without any memory the tables cannot even be looked up.
        EXPECT_TRUE(rows.error.empty() || rows.error == "interrupted") << rows.error;
        EXPECT_FALSE(rows.areComplete);
    }
    const fs::path crowded =
        databaseAt(folder.path() / "crowded",
                   "CREATE TABLE t (x); PRAGMA writable_schema = ON;" + count +
                       " LIMIT 20000) INSERT INTO sqlite_schema SELECT 'table', 't' || x, 't' || x,"
                       " 2, 'CREATE TABLE t' || x || '(x)' FROM n");
    EXPECT_EQ(rowsOf(crowded, {.time = std::chrono::hours(1), .memory = 1 << 20}).error,
              "interrupted");
    const fs::path heavy =
        databaseAt(folder.path() / "heavy", "CREATE TABLE t (x, y); INSERT INTO t VALUES (1, ''),"
                                            " (2, zeroblob(9000)), (3, '')");
    const Rows rows = rowsOf(heavy, {.valueBytes = 8000}, "SELECT x, y FROM t");
    EXPECT_THAT(rows.numbers, ElementsAre(1));
    EXPECT_FALSE(rows.areComplete);
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
        std::string damaged = good;
        damaged[place] = static_cast<char>(~damaged[place]);
        for (const std::string& bad : {good.substr(0, place), damaged}) {
            const auto database = Database::open(folder.write("bad", bad));
            ASSERT_TRUE(database);
            auto statement = database->prepare("SELECT x, y FROM t");
            bool hasRows = false;
            while (statement && statement->step()) {
                statement->text(1);
                hasRows = true;
            }
            readable += hasRows ? 1 : 0;
        }
    }
    EXPECT_GT(readable, 0U);
}

} // namespace
} // namespace vellory::Sqlite
