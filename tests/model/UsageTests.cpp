// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/LauncherState.h"
#include "model/SuggestionsState.h"
#include "model/TileMenu.h"
#include "model/World.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr double day = 86'400;
using SmartListMode = Prefs::SmartListMode;

/// A machine with what one launcher window shows of the suggestions.
struct Learning : testing::Test, World {
    AppModel& begin(const std::vector<BundleID>& apps) {
        // Ten o'clock of a Wednesday: `clock` counts from a Monday.
        clock.time = Date::since2001(7 * 1000 * day + 2 * day + 10 * 3600);
        startWith(apps, boardOf(apps));
        show();
        return *model;
    }
    void show() {
        suggestions.reset();
        state = std::make_unique<LauncherState>(*model);
        suggestions = std::make_unique<SuggestionsState>(*model, *state);
        summon();
    }
    void summon() {
        state->setPresented(false);
        state->setPresented(true);
    }
    void restart() {
        suggestions.reset();
        state.reset();
        model.reset();
        start();
        show();
    }
    /// The search for habits, which runs in the background.
    void search() {
        scheduler.runBackground();
        scheduler.deliver();
    }
    /// Opens and ends apps in this order, so many seconds after one another.
    void use(const std::vector<BundleID>& apps, double apart = 0) {
        for (const BundleID& id : apps) {
            runningApps.starts(id);
            runningApps.quits(id);
            scheduler.advance(apart);
        }
    }
    /// Opens the apps at this time of the day, on several days.
    void openTogether(const std::vector<BundleID>& apps, int days) {
        for (int i = 0; i < days; ++i) {
            use(apps, 60);
            scheduler.advance(day - 60.0 * static_cast<double>(apps.size()));
        }
        search();
    }
    /// The habit that is offered; "" for none.
    std::string offered() const {
        return suggestions->offered() ? suggestions->offered()->id() : "";
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        suggestions->handleKey({key, modifiers});
    }
    std::vector<BundleID> row() const { return suggestions->row(); }

    std::unique_ptr<LauncherState> state;
    std::unique_ptr<SuggestionsState> suggestions;
};

// --- What is kept ---

using UsageFiles = Learning;

TEST_F(UsageFiles, AnEndlessBurstIsWrittenNowAndThenAndAClockSetBackHoldsNothingUp) {
    begin({"mail"});
    const auto stored = [&] { return LaunchLog::load(paths().launchLog()).events.size(); };
    for (int i = 0; i < 10; ++i) {
        runningApps.starts("mail");
        scheduler.advance(4);
    }
    EXPECT_EQ(stored(), 9U) << "after 32 seconds without five of quiet";
    clock.time = clock.time - 3600;
    runningApps.starts("mail");
    EXPECT_EQ(stored(), 11U);
    EXPECT_EQ(model->launchLog().events.size(), 11U);
}

TEST_F(UsageFiles, AnEmptyLaunchLogIsSeededOnceBeforeWhatWasOpenedWhileTheDesktopWasAsked) {
    metadata.records = {{"old", {.lastUsed = Date::since2001(1)}},
                        {"ahead", {.lastUsed = Date::since2001(1e12)}},
                        {"odd", {.lastUsed = Date::since2001(NAN)}}};
    begin({"old", "ahead", "odd", "new"});
    const Date now = clock.time;
    EXPECT_THAT(model->launchLog().events, IsEmpty()) << "the desktop is asked meanwhile";
    runningApps.starts("new");
    metadata.answer();
    const auto seeded =
        ElementsAre(LaunchLog::Event{"old", Date::since2001(1), {}},
                    LaunchLog::Event{"ahead", now, {}}, LaunchLog::Event{"new", now, {}});
    EXPECT_THAT(LaunchLog::load(paths().launchLog()).events, seeded);
    metadata.records["odd"].lastUsed = Date::since2001(3);
    restart();
    metadata.answer();
    EXPECT_THAT(model->launchLog().events, seeded) << "a log with events is left alone";
}

// --- The smart list ---

using SmartListTest = Learning;

TEST_F(SmartListTest, EachModeHasItsRule) {
    metadata.records = {{"a", {.created = Date::since2001(5)}},
                        {"b", {.created = Date::since2001(9)}},
                        {"c", {.created = Date::since2001(7)}}};
    begin({"a", "b", "c", "never"});
    metadata.answer();
    use({"a", "c", "c", "b", "c", "a", "a", "a", "b"}, 600);
    summon();
    const struct {
        SmartListMode mode;
        std::string_view heading;
        std::vector<BundleID> apps;
    } cases[] = {{SmartListMode::suggested, "Suggested for now", {"a", "c", "b"}},
                 {SmartListMode::recent, "Recently opened", {"b", "a", "c"}},
                 {SmartListMode::mostUsed, "Most used", {"a", "c", "b"}},
                 {SmartListMode::newest, "Newest", {"b", "c", "a", "never"}},
                 {SmartListMode::off, "", {}}};
    for (const auto& test : cases) {
        model->prefs().setSmartListMode(test.mode);
        scheduler.advance(0);
        EXPECT_EQ(row(), test.apps) << test.heading;
        EXPECT_EQ(suggestions->heading(), test.heading);
        restart();
        metadata.answer();
        summon();
        EXPECT_EQ(row(), test.apps) << test.heading << " after a restart";
    }
}

TEST_F(SmartListTest, ShowsOneRowOfWhatTheGridShows) {
    begin({"a", "b", "c", "d", "hidden", "unwanted", "com.quorvel.vellory"});
    use({"a", "b", "c", "d", "hidden", "unwanted", "com.quorvel.vellory", "gone"});
    model->hide({"hidden"});
    model->learned().smartList().exclude("unwanted");
    summon();
    EXPECT_THAT(row(), UnorderedElementsAre("a", "b", "c", "d"));
    model->prefs().setColumns(2);
    scheduler.advance(0);
    EXPECT_THAT(row(), ElementsAre("a", "b")) << "a launch each; by identifier";
}

TEST_F(SmartListTest, NothingMovesWhileItIsShown) {
    begin({"a", "b"});
    use({"a"});
    summon();
    EXPECT_THAT(row(), ElementsAre("a"));
    use({"b", "b"});
    scheduler.advance(120);
    EXPECT_THAT(row(), ElementsAre("a"));
    summon();
    EXPECT_THAT(row(), ElementsAre("b", "a"));
    model->hide({"b"});
    scheduler.advance(0);
    EXPECT_THAT(row(), ElementsAre("a")) << "what is gone goes at once";
}

TEST_F(SmartListTest, TheMinuteBringsWhatBelongsToTheHour) {
    begin({"breakfast", "supper"});
    use({"breakfast"});
    scheduler.advance(10 * 3600);
    use({"supper"}, 60);
    summon();
    EXPECT_THAT(row(), ElementsAre("supper", "breakfast"));
    scheduler.advance(14 * 3600);
    summon();
    EXPECT_THAT(row(), ElementsAre("breakfast", "supper"));
}

TEST_F(SmartListTest, TheRowStandsAboveTheFirstLineOfAListOnly) {
    begin({"a", "b", "c", "d", "e", "f"});
    use({"a"});
    model->prefs().setDisplayMode(Prefs::DisplayMode::list);
    model->prefs().setColumns(1);
    model->prefs().setRows(2);
    summon();
    state->setHighlight(2); // the first line of a second page, were there pages
    press(Qt::Key_Up);
    EXPECT_EQ(state->highlight(), 1);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(suggestions->highlight(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(state->highlight(), 0);
}

TEST_F(SmartListTest, KeysLeadUpIntoTheRowAndBack) {
    begin({"a", "b", "c"});
    use({"c", "b", "a"});
    model->prefs().setSmartListMode(SmartListMode::mostUsed);
    model->prefs().setColumns(3);
    summon();
    state->setHighlight(2);
    press(Qt::Key_Up);
    EXPECT_EQ(suggestions->highlight(), 2);
    EXPECT_EQ(state->highlight(), std::nullopt);
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    EXPECT_EQ(suggestions->highlight(), 1);
    press(Qt::Key_Down);
    EXPECT_EQ(suggestions->highlight(), std::nullopt);
    EXPECT_EQ(state->highlight(), 1);
    press(Qt::Key_Up);
    press(Qt::Key_Escape);
    EXPECT_EQ(suggestions->highlight(), std::nullopt);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_THAT(runningApps.asked, ElementsAre("open a"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(runningApps.asked.back(), "new a");
}

// --- Habits ---

using Habits = Learning;

TEST_F(Habits, AGroupOfThreeDaysIsOfferedAndKeptAsAWorkspaceThatDoesNotOpenByItself) {
    begin({"mail", "chat", "notes", "web"});
    openTogether({"mail", "chat", "notes"}, 2);
    EXPECT_EQ(offered(), "");
    openTogether({"mail", "chat", "notes"}, 1);
    EXPECT_EQ(offered(), "chat+mail+notes");

    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    const auto& workspaces = model->workspaces().all();
    ASSERT_EQ(workspaces.size(), 1U);
    EXPECT_EQ(workspaces[0].name, "CHAT, MAIL, NOTES");
    EXPECT_THAT(workspaces[0].appIDs(), ElementsAre("chat", "mail", "notes"));
    EXPECT_THAT(workspaces[0].triggers, IsEmpty());
    EXPECT_EQ(lastNotice(), "Saved “CHAT, MAIL, NOTES” as a workspace");
    search();
    summon();
    EXPECT_EQ(offered(), "") << "it is a workspace now";
}

TEST_F(Habits, OpensAtItsTimeOnlyWhenThatIsChosenForThisOne) {
    begin({"mail", "chat", "notes"});
    openTogether({"mail", "chat", "notes"}, 3);
    suggestions->setOpensAtTime(true);
    summon();
    EXPECT_FALSE(suggestions->opensAtTime()) << "chosen anew at each summons";
    suggestions->setOpensAtTime(true);
    suggestions->accept();
    const auto& triggers = model->workspaces().all().at(0).triggers;
    ASSERT_EQ(triggers.size(), 1U);
    const auto* schedule = std::get_if<Workspace::Schedule>(&triggers[0].content);
    ASSERT_NE(schedule, nullptr);
    EXPECT_EQ(schedule->hour, 10);
    EXPECT_THAT(schedule->weekdays, ElementsAre(4, 5, 6)) << "Wednesday to Friday";
}

TEST_F(Habits, ADismissalIsRememberedOverARestartAndAppsThatAreGoneAreNotOffered) {
    begin({"mail", "chat", "notes++", "a", "b", "c"});
    openTogether({"mail", "chat", "notes++"}, 3);
    ASSERT_NE(offered(), "");
    suggestions->dismiss();
    EXPECT_EQ(offered(), "");
    restart();
    search();
    openTogether({"mail", "chat", "notes++"}, 1);
    summon();
    EXPECT_EQ(offered(), "");
    EXPECT_THAT(model->workspaces().all(), IsEmpty());

    clock.time = clock.time + 5 * 3600;
    openTogether({"a", "b", "c"}, 3);
    summon();
    ASSERT_EQ(offered(), "a+b+c");
    catalogue.uninstall("c");
    model->rescan();
    search();
    EXPECT_EQ(offered(), "");
}

TEST_F(Habits, AnAnswerIsNotFollowedByAnotherQuestionUnderThePointer) {
    begin({"a", "b", "c", "x", "y", "z"});
    openTogether({"a", "b", "c"}, 4);
    clock.time = clock.time + 5 * 3600;
    openTogether({"x", "y", "z"}, 3);
    summon();
    EXPECT_EQ(offered(), "a+b+c");
    suggestions->dismiss();
    search();
    EXPECT_EQ(offered(), "");
    summon();
    EXPECT_EQ(offered(), "x+y+z");
}

// --- What the desktop remembers ---

using DesktopMemory = Learning;

TEST_F(DesktopMemory, UnusedAppsAreThoseThatNobodyHasSeenOpenFor90Days) {
    begin({"stale", "never", "seen", "counted", "runs", "com.quorvel.vellory"});
    metadata.records = {{"stale", {.lastUsed = clock.time - 91 * day}},
                        {"seen", {.lastUsed = clock.time - 89 * day}},
                        {"counted", {.lastUsed = clock.time - 200 * day}}};
    metadata.answer();
    use({"counted"});
    runningApps.starts("runs");
    std::vector<BundleID> unused;
    for (const auto& app : model->learned().unusedApps()) {
        unused.push_back(app.app);
    }
    EXPECT_THAT(unused, ElementsAre("never", "stale"));
}

TEST_F(DesktopMemory, RecentDocumentsAreOpenedWithTheirAppAndTheLauncherHides) {
    const auto file = folder.write("notes.txt", "");
    begin({"edit"});
    int hides = 0;
    QObject::connect(state.get(), &LauncherState::hideRequested, [&] { ++hides; });
    metadata.records = {{"edit", {.recentDocuments = {file, "/gone"}}}};
    metadata.answer();
    EXPECT_THAT(model->learned().recentDocuments("edit"), ElementsAre(file, "/gone"));
    EXPECT_THAT(model->learned().recentDocuments("nobody"), IsEmpty());
    suggestions->openDocument("edit", file);
    EXPECT_THAT(runningApps.asked, ElementsAre("open " + file.string() + " with edit"));
    EXPECT_EQ(hides, 1);
    TileMenu menus(*model, *state);
    for (const MenuEntry& entry : menus.forTile(Tile(BundleID("edit")))) {
        if (entry.text == "Open recent") {
            EXPECT_EQ(entry.entries.at(0).text, "notes.txt");
            entry.entries.at(0).action();
        }
    }
    EXPECT_EQ(runningApps.asked.size(), 2U) << "also from the menu";
    EXPECT_EQ(hides, 2);
    suggestions->openDocument("edit", "/gone");
    EXPECT_EQ(lastNotice(), "Couldn't open gone");
    EXPECT_EQ(hides, 2);
}

// The desktop answers slowly and is asked anew meanwhile.
TEST_F(DesktopMemory, OnlyTheLatestAnswerCounts) {
    begin({"edit"});
    model->learned().refresh();
    EXPECT_EQ(metadata.asked.size(), 2U);
    int changes = 0;
    QObject::connect(&model->learned(), &UsageCenter::recordsChanged, [&] { ++changes; });
    metadata.answer();
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace vellory::test
