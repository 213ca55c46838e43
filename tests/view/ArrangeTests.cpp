// SPDX-License-Identifier: Apache-2.0
// The grid arranged by hand: real pointer and key events on the real window, the board file read
// back.
#include <gmock/gmock.h>

#include <QAccessible>

#include "view/LauncherWindow.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ArrangeTest : public testing::Test, public LauncherWindow {
  protected:
    /// A point of the tile near its right edge, where it lets another stand after it.
    QPoint after(const std::string& id) { return pointOn(tile(id), id, 0.9); }
};

// --- Dragging ---

TEST_F(ArrangeTest, ATileDroppedBetweenOthersStaysThereAndOnTheBackgroundGoesToTheEnd) {
    openWith(6);
    carry(middleOf("app:a00"), after("app:a03"));
    EXPECT_TRUE(eventually([&] {
        return tile("app:a01")->x() < tile("app:a02")->x() - 1 &&
               tile("app:a01")->property("index").toInt() == 0;
    })) << "the others make room while it is carried";
    EXPECT_EQ(onDisk(), "a00 a01 a02 a03 a04 a05");
    letGo(after("app:a03"));
    EXPECT_EQ(onDisk(), "a01 a02 a03 a00 a04 a05");
    drag(middleOf("app:a01"), QPoint(window().width() / 2, window().height() - 200));
    EXPECT_EQ(onDisk(), "a02 a03 a00 a04 a05 a01");
    EXPECT_THAT(runningApps.asked, IsEmpty()) << "a drag opens nothing";
}

TEST_F(ArrangeTest, OntoAnAppMakesAFolderWhoseNameIsTyped) {
    openWith(4);
    carry(middleOf("app:a00"), middleOf("app:a02"));
    EXPECT_TRUE(tile("app:a02")->property("targeted").toBool());
    letGo(middleOf("app:a02"));
    EXPECT_EQ(onDisk(), "a01 [New folder: a02 a00] a03");
    ASSERT_TRUE(fieldBecomes("New folder"));
    type("Tools");
    press(Qt::Key_Return);
    EXPECT_EQ(onDisk(), "a01 [Tools: a02 a00] a03");
    EXPECT_EQ(state->query(), "") << "a name is no search";
    type("a03");
    EXPECT_EQ(state->query(), "a03") << "afterwards the keys search again";
}

TEST_F(ArrangeTest, ADragEndsQuietlyByEscapeAndWhenTheAppGoes) {
    openWith(4);
    const QPoint end = after("app:a03");
    carry(middleOf("app:a00"), end);
    press(Qt::Key_Escape);
    letGo(end);
    EXPECT_EQ(onDisk(), "a00 a01 a02 a03");
    EXPECT_TRUE(controller->isShown());
    EXPECT_TRUE(eventually([&] { return tile("app:a00")->opacity() == 1; }));
    carry(middleOf("app:a00"), end);
    catalogue.uninstall("a00");
    model->rescan();
    settle();
    letGo(end);
    EXPECT_EQ(onDisk(), "a01 a02 a03");
    click("app:a01");
    EXPECT_THAT(runningApps.asked, ElementsAre("open a01"));
}

TEST_F(ArrangeTest, HeldAtTheEdgeItTurnsThePage) {
    openWith(40);
    carry(middleOf("app:a00"), QPoint(window().width() - 6, middleOf("app:a00").y()));
    ASSERT_TRUE(eventually([&] { return state->page() == 1; }));
    settle();
    letGo(after("app:a39"));
    EXPECT_EQ(model->visibleTiles().back().id(), "app:a00");
}

TEST_F(ArrangeTest, OutOfAnOpenFolderOntoTheGrid) {
    const Tile tools = test::folder(5, "Tools", {"a", "b"});
    open({"a", "b", "c", "d"}, board({tools, app("c"), app("d")}));
    click(tools.id());
    settle();
    carry(middleOf("app:a"), QPoint(30, window().height() - 30));
    ASSERT_TRUE(eventually([&] { return !state->openFolder(); })) << "held outside, it closes";
    settle();
    letGo(after("app:d"));
    EXPECT_EQ(onDisk(), "[Tools: b] c d a");
}

// --- Selecting ---

TEST_F(ArrangeTest, CtrlClickAndABandSelect) {
    openWith(10);
    click("app:a03", Qt::ControlModifier);
    EXPECT_THAT(state->selected(), ElementsAre("a03"));
    EXPECT_THAT(runningApps.asked, IsEmpty());
    // From above the first tile's corner to the middle of the ninth: columns 0 and 1 of two rows.
    drag(QPoint(20, middleOf("app:a00").y() - 60), middleOf("app:a08"));
    EXPECT_THAT(state->selected(), ElementsAre("a00", "a01", "a07", "a08"));
    EXPECT_TRUE(eventually([&] { return tile("app:a07")->property("selected").toBool(); }));
    press(Qt::Key_Escape);
    EXPECT_THAT(state->selected(), IsEmpty());
    EXPECT_TRUE(controller->isShown());
}

// --- Menus and names ---

TEST_F(ArrangeTest, TheMenuWorksByPointerAndByKeys) {
    openWith(4);
    rightClick(middleOf("app:a01"));
    ASSERT_TRUE(menuIsOpen());
    choose("Rename…");
    ASSERT_TRUE(fieldBecomes("A01"));
    type("Better");
    press(Qt::Key_Return);
    EXPECT_EQ(model->name("a01"), "Better");
    press(Qt::Key_Right);
    press(Qt::Key_F2);
    ASSERT_TRUE(fieldBecomes("A00"));
    type("x");
    press(Qt::Key_Escape);
    EXPECT_EQ(model->name("a00"), "A00");
    EXPECT_FALSE(state->renaming());

    press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(menuIsOpen());
    choose("Hide");
    EXPECT_EQ(drawn(board(model->visibleTiles())), "a01 a02 a03");

    rightClick({20, window().height() / 2});
    ASSERT_TRUE(menuIsOpen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(menuIsOpen());
    EXPECT_TRUE(controller->isShown()) << "Escape closes the menu only";
    rightClick({20, window().height() / 2});
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, middleOf("app:a03"));
    EXPECT_FALSE(menuIsOpen());
    EXPECT_THAT(runningApps.asked, IsEmpty()) << "a click beside the menu only closes it";
    type("a02");
    EXPECT_EQ(state->query(), "a02");
}

TEST_F(ArrangeTest, TabGoesFromTheFieldToTheGridToTheDotsAndBack) {
    openWith(40);
    const QQuickItem* field = window().activeFocusItem();
    press(Qt::Key_Tab);
    EXPECT_EQ(state->highlight(), 0);
    EXPECT_TRUE(eventually([&] { return tile("app:a00")->property("focusShown").toBool(); }));
    press(Qt::Key_Tab);
    EXPECT_NE(window().activeFocusItem(), field);
    press(Qt::Key_Right);
    EXPECT_EQ(state->page(), 1) << "arrows on the dots turn pages";
    type("a07");
    EXPECT_EQ(state->query(), "a07") << "typing searches from anywhere";
    EXPECT_EQ(window().activeFocusItem(), field);
}

// --- Bad input ---

TEST_F(ArrangeTest, NamesOfAnyLengthAndKindStayInTheirTiles) {
    std::string emoji;
    for (int i = 0; i < 200; ++i) {
        emoji += "\U0001F680";
    }
    const Tile tools = test::folder(5, "Tools", {"a", "b"});
    const Tile more = test::folder(6, "More", {"c"});
    open({"a", "b", "c", "d"}, board({tools, more, app("d")}));
    model->renameFolder(uuid(5), std::string(10'000, 'W'));
    model->renameFolder(uuid(6), emoji);
    model->rename("d", std::string(10'000, 'i'));
    settle();
    for (const std::string& id : {tools.id(), more.id(), std::string("app:d")}) {
        const QQuickItem* item = tile(id);
        ASSERT_TRUE(eventually([&] { return item->property("title").toString().size() > 100; }));
        const QRectF body = item->property("body").toRectF();
        EXPECT_LE(body.width(), item->width()) << id;
        EXPECT_LE(body.bottom(), item->height() + 1) << id;
    }
    click(tools.id());
    settle();
    click("app:a");
    EXPECT_THAT(runningApps.asked, ElementsAre("open a"));
}

// --- Layout history ---

TEST_F(ArrangeTest, TheHistoryRestoresAnEarlierGridWithReturn) {
    open({"b", "a", "c"}, board({app("b"), app("a"), app("c")}));
    model->sortAlphabetically();
    clock.time = clock.time + 60;
    model->moveToEnd("app:a");
    EXPECT_EQ(onDisk(), "b c a");
    state->setPanel(LauncherState::Panel::history);
    settle();
    EXPECT_EQ(controller->viewModel().history()->steps().size(), 2);
    press(Qt::Key_Down);
    EXPECT_EQ(controller->viewModel().history()->preview()->items().front().id, "app:b");
    press(Qt::Key_Return);
    EXPECT_EQ(onDisk(), "b a c");
    EXPECT_EQ(lastNotice(), "Layout restored");
    EXPECT_EQ(state->panel(), LauncherState::Panel::none);
    type("a");
    EXPECT_EQ(state->query(), "a");
}

// --- Assistive technology ---

TEST_F(ArrangeTest, EveryControlHasANameInEveryView) {
    openWith(50);
    QAccessibleInterface* tree = accessible(window());
    countNamed();
    EXPECT_GE(countOf(tree, QAccessible::Button), 20);
    EXPECT_EQ(countOf(tree, QAccessible::PageTab), state->pageCount());

    rightClick(middleOf("app:a01"));
    countNamed();
    EXPECT_GE(countOf(tree, QAccessible::MenuItem), 6);
    press(Qt::Key_Escape);
    model->sortByUse();
    model->moveToEnd("app:a01");
    for (const auto panel : {LauncherState::Panel::history, LauncherState::Panel::hiddenApps,
                             LauncherState::Panel::emoji, LauncherState::Panel::settings}) {
        state->setPanel(panel);
        countNamed();
        EXPECT_EQ(countOf(tree, QAccessible::Dialog), 1);
    }
}

} // namespace
} // namespace vellory::test
