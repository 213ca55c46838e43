// SPDX-License-Identifier: Apache-2.0
// Workspaces by pointer and keys on the real window: the strip, focus sessions, settings;
// what is changed is read back from the file.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>

#include "view/WorkspaceWindow.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- The strip ---

TEST_F(WorkspaceViewTest, AClickOnAChipOpensItsWorkspaceAndItsCrossClosesIt) {
    openWithTwo();
    clickControl("Mail");
    EXPECT_THAT(runningApps.asked, ElementsAre("start a02", "activate a02"));
    EXPECT_FALSE(controller->isShown());
    ASSERT_EQ(model->workspaces().active(), uuid(2));

    show();
    EXPECT_EQ(control("Close Deep Work"), nullptr) << "only the open one can be closed";
    clickControl("Close Mail");
    EXPECT_FALSE(model->workspaces().active());
    EXPECT_EQ(lastNotice(), "Mail closed");
}

TEST_F(WorkspaceViewTest, TheStripIsReachedAndUsedByKeys) {
    openWithTwo();
    press(Qt::Key_Tab); // to the grid
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    press(Qt::Key_Menu);
    EXPECT_TRUE(menuIsOpen());
    press(Qt::Key_Escape);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_EQ(model->workspaces().active(), uuid(2));
    show();
    type("a03");
    EXPECT_EQ(state->query(), "a03") << "typing searches from anywhere";
}

TEST_F(WorkspaceViewTest, WithoutWorkspacesTheStripTakesNoRoomAndTheBackgroundMenuLeadsToThem) {
    openWith(12);
    EXPECT_EQ(root().findChild<QQuickItem*>("workspaceStrip")->height(), 0);
    rightClick({20, window().height() / 2});
    choose("Workspaces…");
    clickControl("New workspace");
    EXPECT_THAT(storedNames(), ElementsAre("New workspace"));
    retype("Garden");
    press(Qt::Key_Return);
    EXPECT_THAT(storedNames(), ElementsAre("Garden"));
    EXPECT_TRUE(eventually([&] { return control("Garden") != nullptr; }));
}

TEST_F(WorkspaceViewTest, TheMenuDuplicatesMovesRestrictsAndDeletesWithAWayBack) {
    openWithTwo();
    model->workspaceShortcuts().setShortcut(uuid(1), "Ctrl+Alt+D");
    rightClickControl("Deep Work");
    choose("Duplicate");
    EXPECT_THAT(storedNames(), ElementsAre("Deep Work", "Deep Work copy", "Mail"));
    rightClickControl("Mail");
    choose("Move back");
    EXPECT_THAT(storedNames(), ElementsAre("Deep Work", "Mail", "Deep Work copy"));
    rightClickControl("Mail");
    choose("Show only its apps");
    EXPECT_TRUE(stored().at(1).focusGrid);

    rightClickControl("Deep Work");
    choose("Delete");
    EXPECT_THAT(storedNames(), ElementsAre("Mail", "Deep Work copy"));
    EXPECT_EQ(model->workspaceShortcuts().shortcut(uuid(1)), "");
    ASSERT_TRUE(eventually([&] { return control("Undo") != nullptr; }));
    clickControl("Undo");
    EXPECT_THAT(storedNames(), ElementsAre("Deep Work", "Mail", "Deep Work copy"));
    EXPECT_EQ(model->workspaceShortcuts().shortcut(uuid(1)), "Ctrl+Alt+D");
}

TEST_F(WorkspaceViewTest, WhileAWorkspaceRestrictsTheGridAllAppsAreAClickAway) {
    Workspace narrow = workspaceNamed(1, "Deep Work", {"a00"});
    narrow.focusGrid = true;
    openWithWorkspaces({narrow});
    clickControl("Deep Work");
    show();
    EXPECT_EQ(tile("app:a05"), nullptr);
    clickControl("Deep Work: Show all apps");
    EXPECT_TRUE(eventually([&] { return tile("app:a05") != nullptr; }));
}

// Names are outside data: they stay one line within their chip, whatever they hold.
TEST_F(WorkspaceViewTest, ManyAndOddlyNamedWorkspacesStayInTheStrip) {
    std::vector<Workspace> list;
    const std::vector<std::string> odd{"two\nlines\u2028three",
                                       "\u202Ereversed",
                                       "a/b/c \"quoted\"",
                                       std::string(10'000, 'W'),
                                       "\n",
                                       "<b>bold</b>"};
    for (std::uint32_t i = 0; i < 40; ++i) {
        const std::string& name = odd[i % odd.size()];
        Workspace workspace = workspaceNamed(i + 1, name, {});
        workspace.symbol = i % 2 == 0 ? "no.such/symbol?" : "";
        list.push_back(workspace);
    }
    openWithWorkspaces(list);
    const auto* strip = root().findChild<QQuickItem*>("workspaceStrip");
    ASSERT_TRUE(strip->isVisible());
    const QRectF area = strip->mapRectToScene(QRectF({}, strip->size()));
    EXPECT_TRUE(QRectF({}, window().size()).contains(area));
    const QQuickItem* chip = control("two lines three");
    ASSERT_NE(chip, nullptr);
    EXPECT_LE(chip->height(), strip->height());
    EXPECT_LT(chip->width(), 300);
    const QQuickItem* add = control("New workspace");
    ASSERT_NE(add, nullptr) << "what makes a new one stays in view";
    EXPECT_TRUE(area.contains(middleOfControl("New workspace")));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_End); // to the "+"
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    EXPECT_EQ(model->workspaces().active(), uuid(40)) << "keys reach what is out of view";
}

// --- Made of what is open ---

TEST_F(WorkspaceViewTest, ANewWorkspaceTakesInWhatIsTicked) {
    windowPlacer.trusted = false;
    desktop.folders = {"/home/me/Notes"};
    desktop.tabs = {"https://a.example"};
    openWithTwo();
    runningApps.starts("a04");
    clickControl("New workspace");
    choose("New workspace from what's open");
    clickControl("Finder folders that are open");
    EXPECT_NE(control("macOS asks once before vellory can read Finder or a browser."), nullptr);
    clickControl("Window positions (needs Accessibility)");
    EXPECT_NE(control("Allow vellory in Accessibility"), nullptr);
    clickControl("Make workspace");
    settle();
    scheduler.runBackground();
    scheduler.deliver();
    settle();
    ASSERT_THAT(stored(), SizeIs(3));
    EXPECT_THAT(stored().back().items,
                ElementsAre(Workspace::Item::app("a04"), Workspace::Item::file("/home/me/Notes")));
    EXPECT_NE(control("Name"), nullptr) << "the editor shows it";
}

// --- Focus sessions ---

TEST_F(WorkspaceViewTest, AFocusSessionIsStartedCountedDownAndEndedNow) {
    openWithTwo();
    rightClickControl("Mail");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return); // into the submenu
    press(Qt::Key_End);
    press(Qt::Key_Return);
    settle();
    ASSERT_EQ(state->panel(), LauncherState::Panel::focusSession);
    for (const char* minutes : {"0", "601", "x", "-5", "10"}) {
        EXPECT_FALSE(model->session());
        clickControl("Minutes");
        retype(minutes);
        press(Qt::Key_Return);
    }
    ASSERT_TRUE(model->session());
    show();
    const FocusSession& session = *controller->workspaces().session();
    EXPECT_EQ(session.remaining(), "10:00");
    EXPECT_NE(control("Focus session: Mail, 10 minutes left"), nullptr);
    scheduler.advance(61);
    EXPECT_EQ(session.remaining(), "8:59");
    EXPECT_NE(control("Focus session: Mail, 9 minutes left"), nullptr);
    clickControl("End now");
    EXPECT_FALSE(model->session());
    EXPECT_EQ(control("End now"), nullptr);
}

// --- Settings ---

TEST_F(WorkspaceViewTest, TheSettingsHoldWhatAllWorkspacesShareAndInstallTheCommand) {
    qputenv("HOME", QByteArray::fromStdString(folder.path().string()));
    focusSource.isReadable = false;
    openWithTwo();
    state->setPanel(LauncherState::Panel::settings);
    settle();
    clickControl("Install command-line tool");
    EXPECT_EQ(noticeShown(), "Installed ~/.local/bin/vellory");
    EXPECT_TRUE(std::filesystem::exists(folder.path() / ".local" / "bin" / "vellory"));
    EXPECT_NE(control("Reinstall command-line tool"), nullptr);
    clickControl("Reduce motion");
    EXPECT_FALSE(model->prefs().reduceMotion());

    controller->settings().setPage(1);
    settle();
    clickControl("Leave the apps it opened");
    EXPECT_EQ(model->prefs().closeApps(), WorkspaceSession::CloseApps::keep);
    clickControl("Read the active Focus directly (needs Full Disk Access)");
    EXPECT_TRUE(model->prefs().readFocusDirectly());
    EXPECT_NE(control("vellory can't read Focus yet"), nullptr);
    clickControl("App…");
    type("a03");
    press(Qt::Key_Return);
    EXPECT_THAT(model->prefs().protectedApps(), ElementsAre("a03"));
    clickControl("Remove A03");
    EXPECT_THAT(model->prefs().protectedApps(), IsEmpty());
}

// --- Assistive technology ---

TEST_F(WorkspaceViewTest, EveryControlOfTheseViewsHasAName) {
    Workspace full = workspaceNamed(1, "Deep Work", {"a00"});
    full.items.push_back(Workspace::Item::file("/home/me/notes.txt"));
    full.triggers = {Workspace::Trigger::schedule({2}, 9, 0), Workspace::Trigger::focus("Work")};
    openWithWorkspaces({full, workspaceNamed(2, "Mail", {"a02"})});
    model->open(full, 25);
    show();
    const QString id = QString::fromStdString(full.id.string());
    int controls = countNamed();
    EXPECT_GE(controls, 12 + 3);
    state->setPanel(LauncherState::Panel::workspaces);
    EXPECT_GE(countNamed(), controls + 2);
    edit(1);
    clickControl("Symbol");
    EXPECT_GE(countNamed(), controls + 100);
    press(Qt::Key_Escape);
    clickControl("Mon at 09:00");
    clickControl("Focus…");
    EXPECT_GE(countNamed(), controls + 30);
    controller->workspaces().chooseSession(id);
    EXPECT_GE(countNamed(), 8);
    controller->workspaces().chooseFromOpen();
    EXPECT_GE(countNamed(), 5);
}

} // namespace
} // namespace vellory::test
