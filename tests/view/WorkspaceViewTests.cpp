// SPDX-License-Identifier: Apache-2.0
// Workspaces by pointer and keys on the real window: the strip, the list and editor beside the
// grid, focus sessions; what is changed is read back from the file.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>

#include "view/LauncherWindow.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

Workspace workspaceNamed(std::uint32_t number, std::string name,
                         const std::vector<BundleID>& apps) {
    Workspace workspace;
    workspace.id = uuid(number);
    workspace.name = std::move(name);
    workspace.symbol = "book";
    for (const BundleID& app : apps) {
        workspace.items.push_back(Workspace::Item::app(app));
    }
    return workspace;
}

class WorkspaceViewTest : public testing::Test, public LauncherWindow {
  protected:
    /// Rows and chips take their places at once: a click finds them where they are.
    WorkspaceViewTest() { defaults.set("reduceMotion", true); }

    void openWithWorkspaces(const std::vector<Workspace>& list, int apps = 12) {
        ASSERT_TRUE(Workspace::save(list, paths().workspaces()).has_value());
        openWith(apps);
    }
    void openWithTwo() {
        openWithWorkspaces(
            {workspaceNamed(1, "Deep Work", {"a00", "a01"}), workspaceNamed(2, "Mail", {"a02"})});
    }
    std::vector<Workspace> stored() { return Workspace::load(paths().workspaces()); }
    Workspace storedFirst() {
        const auto all = stored();
        EXPECT_FALSE(all.empty());
        return all.empty() ? Workspace() : all.front();
    }
    std::vector<std::string> storedNames() {
        std::vector<std::string> names;
        for (const Workspace& workspace : stored()) {
            names.push_back(workspace.name);
        }
        return names;
    }
    void edit(std::uint32_t number) {
        controller->workspaces().edit(QString::fromStdString(uuid(number).string()));
        settle();
    }
    std::string noticeShown() {
        const NoticeList& shown = *controller->viewModel().notices();
        return shown.rowCount() == 0
                   ? ""
                   : shown.data(shown.index(shown.rowCount() - 1), NoticeList::TextRole)
                         .toString()
                         .toStdString();
    }

    /// The control that assistive technology knows by this name; null for none that can be seen.
    QQuickItem* control(const QString& name) {
        return named(QAccessible::queryAccessibleInterface(&window()), name);
    }
    QPoint middleOfControl(const QString& name) {
        QQuickItem* item = control(name);
        EXPECT_NE(item, nullptr) << "no control " << name.toStdString();
        return item == nullptr
                   ? QPoint()
                   : item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }
    /// Brings a control of the editor into view and clicks it.
    void clickControl(const QString& name) {
        if (QQuickItem* item = control(name)) {
            item->forceActiveFocus();
            settle();
            window().grabWindow(); // rows and columns take their places with a frame
            settle();
            ASSERT_TRUE(eventually([&] { return control(name) != nullptr; })) << "it faded in";
        }
        QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, middleOfControl(name));
        settle();
    }
    /// Replaces what stands in the focused field.
    void retype(const char* text) {
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        type(text);
    }
    void rightClickControl(const QString& name) {
        window().grabWindow();
        QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, middleOfControl(name));
    }
    void choose(const QString& text) {
        settle();
        const QVariantList entries = controller->viewModel().menu()->entries();
        press(Qt::Key_Home);
        for (const QVariant& entry : entries) {
            if (entry.toMap().value("kind") == "separator") {
                continue;
            }
            if (entry.toMap().value("text") == text) {
                press(Qt::Key_Return);
                settle();
                return;
            }
            press(Qt::Key_Down);
        }
        FAIL() << "no entry " << text.toStdString();
    }
    void carry(QPoint from, QPoint to) {
        constexpr int steps = 8;
        QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= steps; ++step) {
            QTest::mouseMove(&window(), from + (to - from) * step / steps);
        }
        QTest::mouseMove(&window(), to + QPoint(1, 0));
        QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, to);
        settle();
    }

    /// The controls that can be seen; each must have a name.
    int countNamed() {
        settle();
        int count = 0;
        std::vector<std::string> nameless;
        walk(QAccessible::queryAccessibleInterface(&window()), count, nameless);
        EXPECT_THAT(nameless, IsEmpty());
        return count;
    }

  private:
    static void walk(QAccessibleInterface* item, int& count, std::vector<std::string>& nameless) {
        if (item == nullptr || item->state().invisible) {
            return;
        }
        static const std::set<QAccessible::Role> controls{
            QAccessible::Button,   QAccessible::EditableText, QAccessible::CheckBox,
            QAccessible::ListItem, QAccessible::RadioButton,  QAccessible::Dialog,
            QAccessible::List,     QAccessible::ToolBar,      QAccessible::Grouping};
        if (controls.contains(item->role())) {
            ++count;
            if (item->text(QAccessible::Name).isEmpty()) {
                nameless.push_back(item->object()->metaObject()->className());
            }
        }
        for (int i = 0; i < item->childCount(); ++i) {
            walk(item->child(i), count, nameless);
        }
    }
    static QQuickItem* named(QAccessibleInterface* below, const QString& name) {
        if (below == nullptr || below->state().invisible) {
            return nullptr;
        }
        if (below->text(QAccessible::Name) == name) {
            if (auto* item = qobject_cast<QQuickItem*>(below->object())) {
                return item;
            }
        }
        for (int i = 0; i < below->childCount(); ++i) {
            if (QQuickItem* found = named(below->child(i), name)) {
                return found;
            }
        }
        return nullptr;
    }
};

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
    EXPECT_TRUE(controller->viewModel().menu()->isOpen());
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
    QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, {20, window().height() / 2});
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
    EXPECT_TRUE(area.contains(add->mapToScene({add->width() / 2, add->height() / 2})));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_End); // to the "+"
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    EXPECT_EQ(model->workspaces().active(), uuid(40)) << "keys reach what is out of view";
}

// --- The editor ---

TEST_F(WorkspaceViewTest, EditsLandInTheFileAtOnce) {
    openWithTwo();
    rightClickControl("Deep Work");
    choose("Edit…");
    retype("Deeper Work");
    press(Qt::Key_Tab);
    EXPECT_EQ(storedFirst().name, "Deeper Work");
    EXPECT_EQ(state->query(), "") << "a name is no search";

    clickControl("Symbol");
    type("song");
    press(Qt::Key_Return);
    EXPECT_EQ(storedFirst().symbol, "music.note");

    clickControl("Quit other apps");
    EXPECT_EQ(storedFirst().others, Workspace::Others::quit);
    clickControl("Show only this workspace's apps in the grid");
    EXPECT_TRUE(storedFirst().focusGrid);
    clickControl("Hide the apps it opened");
    EXPECT_EQ(model->prefs().closeApps(), WorkspaceSession::CloseApps::hide);
    clickControl("Remove A00");
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a01"));
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    EXPECT_EQ(state->panel(), LauncherState::Panel::none);
    EXPECT_TRUE(controller->isShown());
}

TEST_F(WorkspaceViewTest, AppsAreDraggedFromTheGridOntoTheEditorAndStayOnTheGrid) {
    const Tile tools = test::folder(5, "Tools", {"c", "d"});
    ASSERT_TRUE(
        Workspace::save({workspaceNamed(1, "Deep Work", {"a"}), workspaceNamed(2, "Mail", {})},
                        paths().workspaces())
            .has_value());
    open({"a", "b", "c", "d"}, board({app("a"), app("b"), tools}));
    edit(1);
    const auto* panel = root().findChild<QQuickItem*>("workspacePanel");
    const QPoint onPanel = panel->mapToScene({panel->width() / 2, panel->height() / 3}).toPoint();
    carry(middleOf("app:b"), onPanel);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a", "b"));
    carry(middleOf(tools.id()), onPanel);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a", "b", "c", "d"));
    carry(middleOf("app:a"), onPanel);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a", "b", "c", "d")) << "once is enough";
    EXPECT_EQ(onDisk(), "a b [Tools: c d]");

    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    settle();
    carry(middleOf("app:b"), middleOfControl("Mail"));
    EXPECT_THAT(stored().at(1).appIDs(), ElementsAre("b")) << "also onto a chip";
    EXPECT_EQ(onDisk(), "a b [Tools: c d]");
}

TEST_F(WorkspaceViewTest, TheMenuOfAnAppAddsItToAWorkspace) {
    openWithTwo();
    QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, middleOf("app:a05"));
    choose("Add to workspace");
    press(Qt::Key_End);
    press(Qt::Key_Return);
    EXPECT_THAT(stored().at(1).appIDs(), ElementsAre("a02", "a05"));
}

TEST_F(WorkspaceViewTest, AppsAndLinksAreAddedByTypingAndBadLinksAreRefused) {
    openWithTwo();
    edit(2);
    clickControl("App…");
    type("a07");
    press(Qt::Key_Return);
    press(Qt::Key_Escape);
    EXPECT_THAT(storedFirst().appIDs(), SizeIs(2));
    EXPECT_THAT(stored().at(1).appIDs(), ElementsAre("a02", "a07"));
    clickControl("Link…");
    type("no link");
    press(Qt::Key_Return);
    EXPECT_THAT(stored().at(1).items, SizeIs(2));
    retype("https://a.example/x y");
    press(Qt::Key_Return);
    EXPECT_EQ(stored().at(1).items.back(), Workspace::Item::url("https://a.example/x%20y"));
    controller->workspaces().editor()->addFiles(
        {QUrl::fromLocalFile("/home/me/Notes"), QUrl("https://not.local/file")});
    EXPECT_EQ(stored().at(1).items.back(), Workspace::Item::file("/home/me/Notes"));
}

TEST_F(WorkspaceViewTest, ItemsAreReorderedByKeysAndByTheirHandles) {
    openWithWorkspaces({workspaceNamed(1, "Deep Work", {"a00", "a01", "a02"})});
    edit(1);
    control("Opens")->forceActiveFocus();
    const QPoint down(0, middleOfControl("Remove A02").y() - middleOfControl("Remove A00").y());
    const auto* list = control("Remove A00")->parentItem();
    const QPoint handle(list->mapToScene({14, 0}).toPoint().x(), middleOfControl("Remove A00").y());
    carry(handle, handle + down);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a01", "a02", "a00"));
    QQuickItem* rows = control("Remove A00");
    while (rows != nullptr && !rows->property("dropAt").isValid()) {
        rows = rows->parentItem();
    }
    ASSERT_NE(rows, nullptr);
    rows->forceActiveFocus();
    press(Qt::Key_Home);
    press(Qt::Key_Down);
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a02", "a01", "a00"));
    press(Qt::Key_Delete);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a01", "a00"));
}

TEST_F(WorkspaceViewTest, WindowsAreCapturedAndClearedOrPermissionIsAskedFor) {
    windowPlacer.windowsOf["a00"] = {
        {.id = 1, .frame = Workspace::Rect{10, 20, 300, 200}, .title = ""}};
    openWithTwo();
    runningApps.starts("a00");
    edit(1);
    clickControl("Capture window positions");
    EXPECT_THAT(storedFirst().windows, SizeIs(1));
    clickControl("Clear");
    EXPECT_THAT(storedFirst().windows, IsEmpty());

    windowPlacer.trusted = false;
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    edit(1);
    EXPECT_EQ(control("Capture window positions"), nullptr);
    EXPECT_NE(control("To save and restore window positions, turn on vellory in System Settings › "
                      "Privacy & Security › Accessibility, then try again."),
              nullptr);
    windowPlacer.trustAsked.clear();
    clickControl("Allow vellory in Accessibility");
    EXPECT_THAT(windowPlacer.trustAsked, ElementsAre(true));
}

TEST_F(WorkspaceViewTest, TriggersAreMadeAndTheirLinksCopied) {
    focusSource.known = {"Work & play"};
    openWithTwo();
    edit(1);
    clickControl("Time…");
    ASSERT_THAT(storedFirst().triggers, SizeIs(1));
    EXPECT_EQ(storedFirst().triggers[0].title(), "Weekdays at 09:00");
    clickControl("Monday");
    clickControl("Time");
    retype("25:00");
    press(Qt::Key_Return);
    EXPECT_EQ(storedFirst().triggers[0].title(), "Tue, Wed, Thu, Fri at 09:00");
    retype("7:05");
    press(Qt::Key_Return);
    EXPECT_EQ(storedFirst().triggers[0].title(), "Tue, Wed, Thu, Fri at 07:05");

    clickControl("Display…");
    clickControl("Built-in Display");
    clickControl("Focus…");
    EXPECT_NE(control("Your Focus modes"), nullptr);
    clickControl("Work & play");
    ASSERT_THAT(storedFirst().triggers, SizeIs(3));
    EXPECT_NE(control("When “Built-in Display” is connected"), nullptr);
    EXPECT_NE(control("When the Work & play Focus turns on"), nullptr);
    clickControl("Copy vellory://focus/Work%20%26%20play");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "vellory://focus/Work%20%26%20play");
    clickControl("Copy vellory://workspace/Deep%20Work");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "vellory://workspace/Deep%20Work");
    clickControl("Remove “When “Built-in Display” is connected”");
    EXPECT_THAT(storedFirst().triggers, SizeIs(2));
}

TEST_F(WorkspaceViewTest, AShortcutIsRecordedRefusedWithoutAModifierAndTakenAway) {
    openWithTwo();
    edit(1);
    clickControl("Shortcut: None: click to record one");
    press(Qt::Key_W);
    EXPECT_EQ(model->workspaceShortcuts().shortcut(uuid(1)), "");
    press(Qt::Key_W, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(model->workspaceShortcuts().shortcut(uuid(1)), "Ctrl+Alt+W");
    EXPECT_EQ(hotKeys.shortcuts.at(uuid(1).string()), "Ctrl+Alt+W");
    hotKeys.taken = {uuid(1).string()};
    clickControl("Shortcut: Ctrl+Alt+W");
    press(Qt::Key_F7);
    EXPECT_NE(control("Another program has these keys. Choose others."), nullptr);
    clickControl("Remove shortcut");
    EXPECT_EQ(model->workspaceShortcuts().shortcut(uuid(1)), "");
    EXPECT_TRUE(controller->isShown());
}

TEST_F(WorkspaceViewTest, AWorkspaceDeletedWhileOpenCanStillBeClosed) {
    openWithTwo();
    clickControl("Mail");
    show();
    edit(2);
    clickControl("Delete");
    EXPECT_THAT(storedNames(), ElementsAre("Deep Work"));
    EXPECT_EQ(control("Name"), nullptr) << "the list is shown again";
    ASSERT_TRUE(model->session());
    EXPECT_EQ(noticeShown(), "“Mail” deleted");
    model->closeWorkspace(false);
    EXPECT_EQ(lastNotice(), "Workspace closed");
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
    clickControl("Minutes");
    retype("10");
    press(Qt::Key_Return);
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

TEST_F(WorkspaceViewTest, ALengthOutOfRangeStartsNothing) {
    openWithTwo();
    controller->workspaces().chooseSession(QString::fromStdString(uuid(1).string()));
    settle();
    for (const char* minutes : {"0", "601", "x", "-5"}) {
        clickControl("Minutes");
        retype(minutes);
        press(Qt::Key_Return);
        EXPECT_FALSE(model->session()) << minutes;
    }
}

// --- Settings ---

TEST_F(WorkspaceViewTest, TheSettingsHoldWhatAllWorkspacesShareAndInstallTheCommand) {
    qputenv("HOME", QByteArray::fromStdString(folder.path().string()));
    focusSource.isReadable = false;
    openWithTwo();
    controller->settings().setShown(true);
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
