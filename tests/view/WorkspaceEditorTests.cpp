// SPDX-License-Identifier: Apache-2.0
// The list and editor of workspaces beside the grid, by pointer and keys on the real window; what
// is changed is read back from the file.
#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>

#include "view/WorkspaceWindow.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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
    clickControl("Delete");
    EXPECT_THAT(storedNames(), ElementsAre("Mail"));
    EXPECT_EQ(noticeShown(), "“Deeper Work” deleted");
    EXPECT_EQ(control("Name"), nullptr) << "the list is shown again";
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
    drag(middleOf("app:b"), onPanel);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a", "b"));
    drag(middleOf(tools.id()), onPanel);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a", "b", "c", "d"));
    drag(middleOf("app:a"), onPanel);
    EXPECT_THAT(storedFirst().appIDs(), ElementsAre("a", "b", "c", "d")) << "once is enough";
    EXPECT_EQ(onDisk(), "a b [Tools: c d]");

    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    settle();
    drag(middleOf("app:b"), middleOfControl("Mail"));
    EXPECT_THAT(stored().at(1).appIDs(), ElementsAre("b")) << "also onto a chip";
    EXPECT_EQ(onDisk(), "a b [Tools: c d]");
}

TEST_F(WorkspaceViewTest, TheMenuOfAnAppAddsItToAWorkspace) {
    openWithTwo();
    rightClick(middleOf("app:a05"));
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
    drag(handle, handle + down);
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

} // namespace
} // namespace vellory::test
