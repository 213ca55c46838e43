// SPDX-License-Identifier: Apache-2.0
// What an import costs against the size of what is imported. To keep: a launcher's database of
// 10,000 items under 50 ms, a backup of 50 MB under 2 s.
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include "Import/BackupReader.h"
#include "Import/LaunchpadImporter.h"
#include "Import/RivalImport.h"

namespace {

using namespace vellory;
namespace fs = std::filesystem;

/// A database in a file of its own.
class Database {
  public:
    explicit Database(const std::string& sql) {
        std::string pattern = (fs::temp_directory_path() / "vellory-bench-XXXXXX").string();
        const int file = ::mkstemp(pattern.data());
        path_ = pattern;
        sqlite3* handle = nullptr;
        if (file < 0 || sqlite3_open(pattern.c_str(), &handle) != SQLITE_OK ||
            sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error("no database to measure with");
        }
        sqlite3_close(handle);
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { fs::remove(path_); }

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

std::string numbers(std::int64_t count) {
    return "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT " +
           std::to_string(count) + ") ";
}

/// Pages of 35 items, of which one in ten is a folder with a page of nine apps.
void launchpad(benchmark::State& state) {
    const std::int64_t apps = state.range(0);
    const Database database(
        "CREATE TABLE items (rowid INTEGER PRIMARY KEY, uuid TEXT, type INTEGER, parent_id INTEGER,"
        " ordering INTEGER); CREATE TABLE apps (item_id INTEGER PRIMARY KEY, title TEXT, bundleid "
        "TEXT); CREATE TABLE groups (item_id INTEGER PRIMARY KEY, title TEXT);"
        "INSERT INTO items VALUES (1, 'ROOTPAGE', 1, 0, 0);" +
        numbers(apps / 35 + 1) +
        "INSERT INTO items SELECT 1000000 + x, hex(randomblob(18)), 3, 1, x FROM n;" +
        numbers(apps / 10) +
        "INSERT INTO items SELECT 2000000 + x, hex(randomblob(18)), 2, 1000001 + x * 10 / 35, x "
        "FROM n;" +
        numbers(apps / 10) +
        "INSERT INTO items SELECT 3000000 + x, hex(randomblob(18)), 3, 2000000 + x, 0 FROM n;" +
        numbers(apps / 10) + "INSERT INTO groups SELECT 2000000 + x, 'Folder ' || x FROM n;" +
        numbers(apps) +
        "INSERT INTO items SELECT 4000000 + x, hex(randomblob(18)), 4, CASE WHEN x % 10 = 0 THEN "
        "1000001 + x / 35 ELSE 3000001 + (x - 1) / 10 END, x FROM n;" +
        numbers(apps) +
        "INSERT INTO apps SELECT 4000000 + x, 'App number ' || x, 'com.example.app' || x FROM n;");
    for (auto _ : state) {
        const auto layout = LaunchpadImporter::importLayout(database.path());
        if (!layout || layout->appCount() < static_cast<std::size_t>(apps) * 9 / 10) {
            state.SkipWithError("apps are missing");
            break;
        }
    }
    state.SetComplexityN(apps);
}

void launchNext(benchmark::State& state) {
    const std::int64_t apps = state.range(0);
    const Database database("CREATE TABLE ZPAGEENTRYDATA (Z_PK INTEGER PRIMARY KEY, ZPAGEINDEX, "
                            "ZPOSITION, ZKIND, ZAPPPATH, ZFOLDERNAME, ZAPPPATHS);" +
                            numbers(apps) +
                            "INSERT INTO ZPAGEENTRYDATA SELECT x, x * 7919 % 300, x % 35, 'app', "
                            "'/Applications/App ' || x || '.app', NULL, NULL FROM n");
    for (auto _ : state) {
        const auto layout = RivalImport::launchNext(
            database.path(), [](const std::string& path) { return "com.example." + path; });
        if (!layout || layout->appCount() != static_cast<std::size_t>(apps)) {
            state.SkipWithError("apps are missing");
            break;
        }
    }
    state.SetComplexityN(apps);
}

std::string jsonBackup(std::size_t bytes) {
    std::string out = "{\"version\": 2, \"items\": [";
    for (int i = 0; out.size() < bytes; ++i) {
        const std::string number = std::to_string(i);
        out += R"({"name": "Folder )" + number + R"(", "apps": [)";
        for (const char* part : {"a", "b", "c", "d"}) {
            out += R"({"name": "App )" + number + R"(", "bundleIdentifier": "com.example.)" + part +
                   number + R"(", "path": "/Applications/App )" + number + R"(.app"},)";
        }
        out += "null]},\n";
    }
    return out + "null]}";
}

/// A property list of few apps with large pictures.
std::string xmlBackup(std::size_t bytes) {
    std::string out = "<plist><array>";
    const std::string picture(100'000, 'A');
    for (int i = 0; out.size() < bytes; ++i) {
        out += "<dict><key>icon</key><data>" + picture +
               "</data><key>path</key><string>com.example.app" + std::to_string(i) +
               "</string></dict>";
    }
    return out + "</array></plist>";
}

template <auto make>
void backup(benchmark::State& state) {
    const std::string bytes = make(static_cast<std::size_t>(state.range(0)) * 1'000'000);
    for (auto _ : state) {
        const auto layout = RivalImport::layoutInBackup(
            bytes, [](const std::string&) -> std::optional<BundleID> { return std::nullopt; });
        if (!layout) {
            state.SkipWithError("no layout");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    state.SetComplexityN(state.range(0));
}

BENCHMARK(launchpad)
    ->RangeMultiplier(10)
    ->Range(100, 100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(launchNext)
    ->RangeMultiplier(10)
    ->Range(100, 100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(backup<jsonBackup>)
    ->Name("jsonBackup/MB")
    ->Arg(1)
    ->Arg(5)
    ->Arg(50)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(backup<xmlBackup>)
    ->Name("xmlBackup/MB")
    ->Arg(1)
    ->Arg(5)
    ->Arg(50)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

} // namespace

BENCHMARK_MAIN();
