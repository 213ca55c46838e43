// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <limits>

#include "Desk/DeskHistory.h"
#include "Support/AtomicFile.h"
#include "support/Lists.h"
#include "support/Records.h"
#include "support/TemporaryFolder.h"

namespace vellory::desk_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Reason = DeskSnapshot::Reason;

const Calendar stockholm("Europe/Stockholm");
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A moment of March 2026 in Stockholm.
Date at(int day, int hour, int minute = 0) {
    return stockholm.date({.year = 2026, .month = 3, .day = day, .hour = hour, .minute = minute})
        .value();
}

DeskSnapshot desk(Date date, Reason reason = Reason::periodic) {
    return {
        .date = date,
        .apps = {"editor", "mail"},
        .hidden = {"mail"},
        .windows = {{"editor", 0, {10, 35, 705, 855}, "Main"}, {"editor", 2, {0, 0, 90, 80}, {}}},
        .workspace = "Writing",
        .reason = reason};
}

std::vector<Date> dates(const std::vector<DeskSnapshot>& list) {
    return test::each(list, &DeskSnapshot::date);
}

TEST(DeskSnapshot, SameDeskLooksAtAppsAndFramesOnly) {
    using Change = void (*)(DeskSnapshot&);
    const std::vector<std::pair<Change, bool>> cases{
        {[](DeskSnapshot& d) { d = desk(at(1, 0), Reason::manual); }, true},
        {[](DeskSnapshot& d) { d.workspace.reset(); }, true},
        {[](DeskSnapshot& d) { d.windows[1].bundleID = "mail"; }, false},
        {[](DeskSnapshot& d) { d.windows[0].screenName = "Other"; }, true},
        {[](DeskSnapshot& d) { d.apps = {"mail", "editor", "mail"}; }, true},
        {[](DeskSnapshot& d) { d.apps.push_back("web"); }, false},
        {[](DeskSnapshot& d) { d.hidden.clear(); }, false},
        {[](DeskSnapshot& d) { d.windows.pop_back(); }, false},
        {[](DeskSnapshot& d) { std::swap(d.windows[0], d.windows[1]); }, false},
        {[](DeskSnapshot& d) { d.windows[1].index = 1; }, false},
        {[](DeskSnapshot& d) { d.windows[0].frame = {18, 27, 713, 847}; }, true},
        {[](DeskSnapshot& d) { d.windows[0].frame.x += 8.5; }, false},
        {[](DeskSnapshot& d) { d.windows[0].frame.y -= 9; }, false},
        {[](DeskSnapshot& d) { d.windows[0].frame.width += 9; }, false},
        {[](DeskSnapshot& d) { d.windows[0].frame.height += 9; }, false},
        {[](DeskSnapshot& d) { d.windows[0].frame.height = nan; }, false},
    };
    const DeskSnapshot before = desk(at(7, 12));
    for (std::size_t i = 0; i < cases.size(); ++i) {
        DeskSnapshot after = before;
        cases[i].first(after);
        EXPECT_EQ(before.sameDesk(after, 8), cases[i].second) << i;
        EXPECT_EQ(after.sameDesk(before, 8), cases[i].second) << i;
    }
}

TEST(DeskSnapshot, RestoringOpensWhatIsMissingAndHidesWhatWasNotThere) {
    DeskSnapshot snapshot;
    snapshot.apps = {"c", "a", "b"};
    EXPECT_EQ(snapshot.restorePlan(
                  {"x", "com.apple.finder", "a", "guard", "com.quorvel.vellory", "w"}, {"guard"}),
              (DeskSnapshot::RestorePlan{.open = {"c", "b"}, .hide = {"x", "w"}}));
}

TEST(DeskSnapshot, BecomesAWorkspace) {
    const Uuid id = Uuid::random();
    const DeskSnapshot snapshot = desk(at(7, 12));
    Workspace expected;
    expected.id = id;
    expected.name = "Desk at 12:00";
    expected.symbol = "clock.arrow.circlepath";
    expected.items = {Workspace::Item::app("editor"), Workspace::Item::app("mail")};
    expected.windows = snapshot.windows;
    EXPECT_EQ(snapshot.workspaceNamed("Desk at 12:00", false, id), expected);
    expected.others = Workspace::Others::hide;
    EXPECT_EQ(snapshot.workspaceNamed("Desk at 12:00", true, id), expected);
}

class DeskHistoryTest : public testing::Test {
  protected:
    const TemporaryFolder parent;
    const std::filesystem::path folder = parent.path() / "DeskHistory";
    const DeskHistory history{folder, 7, stockholm};

    /// What `append` returned; fails the test on an error.
    bool append(const DeskSnapshot& snapshot) const {
        const auto stored = history.append(snapshot);
        EXPECT_TRUE(stored);
        return stored.value_or(false);
    }
    std::string content(const std::string& name) const {
        return AtomicFile::read(folder / name).value_or("none");
    }
};

TEST_F(DeskHistoryTest, DayFilesAreCompactJsonWithDatesSince1970) {
    DeskSnapshot snapshot = desk(Date::since1970(1'772'884'800.25), Reason::beforeWorkspace);
    snapshot.windows.pop_back();
    EXPECT_TRUE(append(snapshot));
    EXPECT_EQ(content("2026-03-07.json"),
              R"([{"apps":["editor","mail"],"date":1772884800.25,"hidden":["mail"],)"
              R"("reason":"beforeWorkspace","windows":[{"bundleID":"editor","frame":)"
              R"({"height":855.0,"width":705.0,"x":10.0,"y":35.0},"index":0,)"
              R"("screenName":"Main"}],"workspace":"Writing"}])");
    EXPECT_THAT(history.all(), ElementsAre(snapshot));
}

TEST_F(DeskHistoryTest, DaysAreCutByTheCalendar) {
    EXPECT_EQ(history.fileFor(at(7, 23, 59)), folder / "2026-03-07.json");
    EXPECT_EQ(history.fileFor(at(7, 0)), folder / "2026-03-07.json"); // still the 6th in UTC
    EXPECT_EQ(DeskHistory(folder, 7, Calendar("UTC")).fileFor(at(7, 0)),
              folder / "2026-03-06.json");
    EXPECT_EQ(history.fileFor(Date{-63'000'000'000}), folder / "0004-08-11.json");
    for (const double seconds : {nan, std::numeric_limits<double>::infinity(), 1e18}) {
        EXPECT_EQ(history.fileFor(Date{seconds}), std::nullopt);
        EXPECT_FALSE(history.append(desk(Date{seconds})));
    }
    EXPECT_FALSE(exists(folder));
}

TEST_F(DeskHistoryTest, UnchangedDeskIsStoredOnceAnHour) {
    EXPECT_TRUE(append(desk(at(7, 10))));
    for (const int minute : {15, 30, 45}) {
        EXPECT_FALSE(append(desk(at(7, 10, minute))));
    }
    EXPECT_TRUE(append(desk(at(7, 11))));
    EXPECT_FALSE(append(desk(at(7, 10, 59)))); // the clock was set back
    EXPECT_TRUE(append(desk(at(7, 11), Reason::beforeWorkspace)));
    EXPECT_TRUE(append(desk(at(7, 11), Reason::manual)));
    EXPECT_FALSE(append(desk(at(7, 11, 59))));
    EXPECT_TRUE(append(desk(at(8, 0)))); // another day
}

TEST_F(DeskHistoryTest, ChangedDeskIsStoredAtOnceAndComparedWithTheLatest) {
    DeskSnapshot moved = desk(at(7, 10, 20));
    EXPECT_TRUE(append(desk(at(7, 10))));
    moved.windows[0].frame.x += 5;
    EXPECT_FALSE(append(moved));
    moved.windows[0].frame.x += 4;
    EXPECT_TRUE(append(moved));
    EXPECT_TRUE(append(desk(at(7, 10, 30))));
    // One that comes in late is filed where it belongs, but compared with the latest.
    DeskSnapshot late = moved;
    late.date = at(7, 9);
    EXPECT_TRUE(append(late));
    EXPECT_THAT(dates(history.all()),
                ElementsAre(at(7, 9), at(7, 10), at(7, 10, 20), at(7, 10, 30)));
}

TEST_F(DeskHistoryTest, FrameThatJsonCannotSpellCostsOnlyItsSlot) {
    DeskSnapshot snapshot = desk(at(7, 10));
    snapshot.windows[0].frame.y = nan;
    EXPECT_TRUE(append(snapshot));
    snapshot.windows.erase(snapshot.windows.begin());
    EXPECT_THAT(history.all(), ElementsAre(snapshot));
}

TEST_F(DeskHistoryTest, SnapshotsAreReadStrictly) {
    const auto isRead = [&](const std::string& text) {
        parent.write(folder / "2026-03-07.json", text);
        return !history.all().empty();
    };
    const std::string honest = json::encode(std::vector{desk(at(7, 10))}, json::Style::compact);
    test::StrictReading(isRead, {"screenName", "workspace"}, {}).expectOf(honest);
    EXPECT_FALSE(isRead(test::changed(honest, "periodic", "hourly")));
    EXPECT_FALSE(isRead(test::changed(honest, R"("date":)", R"("date":1e999,"x":)")));
}

TEST_F(DeskHistoryTest, UnreadableDayIsPassedOverAndKeptOnceWhenOverwritten) {
    const auto file = folder / "2026-03-07.json";
    const auto kept = folder / "2026-03-07.json.unreadable";
    ASSERT_TRUE(append(desk(at(6, 10))));
    const std::string honest = json::encode(std::vector{desk(at(7, 10))});
    const std::string faulty[] = {"",
                                  "{}",
                                  "[null]",
                                  honest + "x",
                                  honest.substr(0, honest.size() - 3),
                                  std::string(1'000'000, '['),
                                  std::string(DeskHistory::fileLimit, ' ') + "[]"};
    for (const std::string& text : faulty) {
        std::filesystem::remove(kept);
        parent.write(file, text);
        EXPECT_THAT(dates(history.all()), ElementsAre(at(6, 10))) << text.substr(0, 80);
        EXPECT_TRUE(append(desk(at(7, 10))));
        EXPECT_EQ(AtomicFile::read(kept), text);
        EXPECT_THAT(dates(history.all()), ElementsAre(at(6, 10), at(7, 10)));
    }
    EXPECT_TRUE(append(desk(at(7, 10), Reason::manual)));
    EXPECT_EQ(AtomicFile::read(kept), *std::rbegin(faulty));
}

TEST_F(DeskHistoryTest, KeysOfLaterVersionsAndOddNumbersAreRead) {
    parent.write(
        folder / "any name.json",
        R"([{"date":1e300,"apps":[],"hidden":[],"windows":[{"bundleID":"../../a","index":-7.0,
                   "frame":{"x":-1e300,"y":0,"width":-1,"height":0,"z":[{}]},"screenName":null}],
                   "workspace":null,"reason":"manual","mood":{"a":["b"]}}])");
    const auto all = history.all();
    ASSERT_THAT(all, SizeIs(1));
    EXPECT_THAT(all[0].windows,
                ElementsAre(Workspace::WindowSlot{"../../a", -7, {-1e300, 0, -1, 0}, {}}));
    EXPECT_EQ(all[0].workspace, std::nullopt);
}

TEST_F(DeskHistoryTest, AllReadsEveryDayInOrderAndOnlyJsonFiles) {
    EXPECT_THAT(history.all(), IsEmpty());
    for (const int day : {9, 7, 8}) {
        ASSERT_TRUE(append(desk(at(day, 10))));
    }
    parent.write(folder / "2026-03-10.txt", content("2026-03-09.json"));
    std::filesystem::create_directories(folder / "2026-03-11.json");
    EXPECT_THAT(dates(history.all()), ElementsAre(at(7, 10), at(8, 10), at(9, 10)));
}

TEST_F(DeskHistoryTest, PruneKeepsTheLastDaysToTheSecond) {
    for (const Date date : {at(3, 9), at(7, 11, 59), at(7, 12), at(14, 11)}) {
        ASSERT_TRUE(append(desk(date, Reason::manual)));
    }
    parent.write(folder / "2026-03-01.json", "no day");
    parent.write(folder / "2026-03-02.json", "[]");
    parent.write(folder / "2026-03-06.json.unreadable", "x");
    parent.write(folder / "2026-03-07.json.unreadable", "x");
    const std::string young = content("2026-03-14.json");
    history.prune(Date{nan});
    EXPECT_THAT(history.all(), SizeIs(4));
    history.prune(at(14, 12));
    EXPECT_THAT(dates(history.all()), ElementsAre(at(7, 12), at(14, 11)));
    EXPECT_THAT(test::namesIn(folder),
                ElementsAre("2026-03-01.json", "2026-03-07.json", "2026-03-07.json.unreadable",
                            "2026-03-14.json"));
    EXPECT_EQ(content("2026-03-14.json"), young);
    history.prune(at(31, 0));
    EXPECT_THAT(history.all(), IsEmpty());
}

TEST_F(DeskHistoryTest, ForgettingDeletesTheFolderAndWhatALinkStandsFor) {
    EXPECT_TRUE(history.forget());
    ASSERT_TRUE(append(desk(at(7, 10))));
    EXPECT_TRUE(history.forget());
    EXPECT_FALSE(exists(folder));
    const auto elsewhere = parent.path() / "elsewhere";
    std::filesystem::create_directories(elsewhere);
    std::filesystem::create_directory_symlink(elsewhere, folder);
    ASSERT_TRUE(append(desk(at(7, 10))));
    EXPECT_TRUE(history.forget());
    EXPECT_FALSE(exists(elsewhere));
    EXPECT_FALSE(is_symlink(folder));
}

TEST_F(DeskHistoryTest, WritingFailuresAreReportedAndLoseNothing) {
    parent.write(folder, "a file where the folder should be");
    EXPECT_FALSE(history.append(desk(at(7, 10))));
    std::filesystem::remove(folder);
    ASSERT_TRUE(append(desk(at(7, 10))));
    DeskSnapshot huge = desk(at(7, 11));
    huge.apps.assign(1000, std::string(10'000, 'x'));
    EXPECT_EQ(history.append(huge).error(), std::errc::file_too_large);
    EXPECT_THAT(dates(history.all()), ElementsAre(at(7, 10)));
}

TEST(DeskHistory, PickTakesTheNewestBeforeOrTheFirstSoonAfter) {
    const std::vector<DeskSnapshot> list{desk(at(7, 8, 20)), desk(at(7, 9)),
                                         desk(at(7, 9), Reason::manual), desk(at(7, 12))};
    const auto pick = [&](Date date) { return DeskHistory::pick(list, date); };
    EXPECT_EQ(pick(at(7, 7)), std::nullopt);
    EXPECT_EQ(pick(at(7, 7, 50) - 1), std::nullopt);
    EXPECT_EQ(pick(at(7, 7, 50)), list[0]);
    EXPECT_EQ(pick(at(7, 8, 20)), list[0]);
    EXPECT_EQ(pick(at(7, 8, 59)), list[0]);
    EXPECT_EQ(pick(at(7, 9)), list[2]);
    EXPECT_EQ(pick(at(7, 11, 59)), list[2]);
    EXPECT_EQ(pick(at(9, 0)), list[3]);
    EXPECT_EQ(DeskHistory::pick({}, at(9, 0)), std::nullopt);
}

TEST(DeskHistory, DaysComeNewestFirstWithTheirHours) {
    // On 29 March 2026 the clocks skip from 02:00 to 03:00.
    const std::vector<DeskSnapshot> list{
        desk(at(7, 0)),         desk(at(7, 23, 59)), desk(at(28, 12)), desk(at(29, 1, 59)),
        desk(at(29, 1) + 3600), desk(at(29, 1, 5)),  desk(Date{1e300})};
    EXPECT_THAT(DeskHistory::days(list, stockholm),
                ElementsAre(DeskHistory::Day{at(29, 0), {1, 3}}, DeskHistory::Day{at(28, 0), {12}},
                            DeskHistory::Day{at(7, 0), {0, 23}}));
    EXPECT_THAT(DeskHistory::days({}, stockholm), IsEmpty());
}

} // namespace
} // namespace vellory::desk_tests
