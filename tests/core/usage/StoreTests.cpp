// SPDX-License-Identifier: Apache-2.0
#include "Usage/LaunchLog.h"
#include "Usage/UsageStore.h"

#include <limits>

#include <gmock/gmock.h>

#include "support/Lists.h"
#include "support/Records.h"
#include "support/TemporaryFolder.h"

namespace vellory::usage_tests {
namespace {

using test::contentOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Date at(double seconds) {
    return Date::since2001(seconds);
}

TEST(UsageStore, CountsLaunchesAndTheLatestRecordedDateReplacesTheLast) {
    UsageStore store;
    EXPECT_EQ(store.count("a"), 0);
    store.record("a", at(100));
    store.record("a", at(40)); // the clock was set back
    EXPECT_EQ(store.count("a"), 2);
    EXPECT_EQ(store.entries.at("a").last, at(40));
}

TEST(UsageStore, ListsTakeTheFirstOfTheAppsAskedFor) {
    UsageStore store;
    store.entries = {{"a", {5, at(1)}}, {"b", {7, at(3)}}, {"c", {5, at(9)}}, {"d", {9, at(3)}}};
    const std::set<BundleID> among{"a", "b", "c", "unknown"};
    EXPECT_THAT(store.recent(2, among), ElementsAre("c", "b"));
    EXPECT_THAT(store.recent(99, among), ElementsAre("c", "b", "a"));
    // Equal counts by identifier.
    EXPECT_THAT(store.mostUsed(99, among), ElementsAre("b", "a", "c"));
    EXPECT_THAT(store.mostUsed(1, {"a", "b", "c", "d"}), ElementsAre("d"));
    EXPECT_THAT(store.recent(0, among), IsEmpty());
    EXPECT_THAT(store.mostUsed(3, {}), IsEmpty());
}

TEST(LaunchLog, ALaunchPastTheLimitDropsTheOldest) {
    LaunchLog log;
    for (int i = 0; i < 4001; ++i) {
        log.record("a", at(i));
    }
    ASSERT_EQ(log.events.size(), 4000U);
    EXPECT_EQ(log.events.front().at, at(1));
    EXPECT_EQ(log.events.back().at, at(4000));
    // A limit from the file holds from the next launch on.
    for (const auto& [limit, left] :
         {std::pair<std::int64_t, std::size_t>{10, 10}, {0, 0}, {-5, 0}}) {
        log.limit = limit;
        log.record("new", at(5000));
        EXPECT_EQ(log.events.size(), left);
        EXPECT_TRUE(left == 0 || log.events.back().app == "new");
    }
}

TEST(UsageStores, DateThatIsNoNumberIsNotRecorded) {
    UsageStore usage;
    LaunchLog log;
    for (const double bad : {nan, inf, -inf}) {
        usage.record("a", at(bad));
        log.record("a", at(bad));
    }
    EXPECT_EQ(usage, UsageStore{});
    EXPECT_EQ(log, LaunchLog{});
}

TEST(UsageStores, FilesKeepEveryBitAndTheDocumentedShape) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "new" / "store.json";

    UsageStore usage;
    usage.record("com.example.É", at(0.1));
    usage.record("b", at(-1e300));
    ASSERT_TRUE(usage.save(file));
    EXPECT_EQ(UsageStore::load(file), usage);
    EXPECT_EQ(json::parse(contentOf(file)).value()["entries"]["com.example.É"],
              json::Value({{"count", 1}, {"last", 0.1}}));

    LaunchLog log;
    const auto workspace = Uuid::parse("3F2504E0-4F89-41D3-9A0C-0305E82C3301");
    log.record("a", at(700'000'000.123456789), workspace);
    log.record("b", at(1));
    ASSERT_TRUE(log.save(file));
    EXPECT_EQ(LaunchLog::load(file), log);
    EXPECT_EQ(json::parse(contentOf(file)).value(),
              json::Value({{"limit", 4000},
                           {"events",
                            {{{"app", "a"},
                              {"at", 700'000'000.123456789},
                              {"workspace", "3F2504E0-4F89-41D3-9A0C-0305E82C3301"}},
                             {{"app", "b"}, {"at", 1.0}}}}}));
}

TEST(UsageStores, FileThatIsNoStoreReadsAsEmptyAndIsKeptBeside) {
    const TemporaryFolder folder;
    EXPECT_EQ(UsageStore::load(folder.path() / "missing.json"), UsageStore{});
    EXPECT_EQ(LaunchLog::load(folder.path()), LaunchLog{}); // a folder

    for (const std::string text :
         {"", "[]", R"({"entries":{"a":{"count":0,"last":0}}})",
          R"({"entries":{"a":{"count":99999999999999999999,"last":0}}})"}) {
        const auto file = folder.write("usage.json", text);
        EXPECT_EQ(UsageStore::load(file), UsageStore{}) << text;
        EXPECT_EQ(contentOf(folder.path() / "usage.json.unreadable"), text);
        std::filesystem::remove(folder.path() / "usage.json.unreadable");
    }
    test::expectStrictReading<UsageStore>(R"({"entries":{"a":{"count":1,"last":0.1}}})", {},
                                          {"entries"});

    const std::string log = R"({"events":[{"app":"a","at":0.1,"workspace":)"
                            R"("3F2504E0-4F89-41D3-9A0C-0305E82C3301"}],"limit":10})";
    test::expectStrictReading<LaunchLog>(log, {"workspace"});
    for (const auto& [what, with] :
         {std::pair("3F2504E0", "none"), {":10}", ":-1}"}, {":10}", ":1000001}"}}) {
        EXPECT_FALSE(json::decode<LaunchLog>(test::changed(log, what, with))) << with;
    }
    const std::string million =
        R"({"limit":4000,"events":[)" + test::repeated(R"({"app":"a","at":0},)", 1'000'000);
    EXPECT_EQ(LaunchLog::load(
                  folder.write("launches.json", million.substr(0, million.size() - 1) + "]}")),
              LaunchLog{});
    // A repeated key and a far date are odd, but readable.
    const auto odd = UsageStore::load(folder.write(
        "usage.json", R"({"entries":{},"entries":{"a":{"count":1,"count":2,"last":1e300}}})"));
    EXPECT_EQ(odd.count("a"), 2);
}

} // namespace
} // namespace vellory::usage_tests
