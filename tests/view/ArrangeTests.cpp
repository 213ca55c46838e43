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
    /// Presses on a tile and carries it to a point, in steps as a hand does.
    void carry(const std::string& id, QPoint to) { carry(middleOf(id), to); }
    void carry(QPoint from, QPoint to) {
        constexpr int steps = 8;
        QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= steps; ++step) {
            QTest::mouseMove(&window(), from + (to - from) * step / steps);
        }
        QTest::mouseMove(&window(), to + QPoint(1, 0));
        pointer_ = to;
    }
    void letGo() {
        QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, pointer_);
        settle();
    }
    void rightClick(QPoint at) {
        QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, at);
    }
    /// A point on the tile's cell at a share of its width.
    QPoint atShare(const std::string& id, double across) {
        const QQuickItem* item = tile(id);
        EXPECT_NE(item, nullptr) << id;
        return item == nullptr
                   ? QPoint()
                   : item->mapToScene({item->width() * across, item->height() / 2}).toPoint();
    }
    bool menuIsOpen() { return controller->viewModel().menu()->isOpen(); }
    /// Moves down the open menu to the entry with this text.
    void choose(const QString& text) {
        const QVariantList entries = controller->viewModel().menu()->entries();
        press(Qt::Key_Home);
        for (const QVariant& entry : entries) {
            if (entry.toMap().value("kind") == "separator") {
                continue;
            }
            if (entry.toMap().value("text") == text) {
                press(Qt::Key_Return);
                return;
            }
            press(Qt::Key_Down);
        }
        FAIL() << "no entry " << text.toStdString();
    }

  private:
    QPoint pointer_;
};

// --- Dragging ---

TEST_F(ArrangeTest, ATileDroppedBetweenOthersStaysThere) {
    openWith(6);
    carry("app:a00", atShare("app:a03", 0.9));
    EXPECT_TRUE(eventually([&] {
        return tile("app:a01")->x() < tile("app:a02")->x() - 1 &&
               tile("app:a01")->property("index").toInt() == 0;
    })) << "the others make room while it is carried";
    EXPECT_EQ(onDisk(), "a00 a01 a02 a03 a04 a05");
    letGo();
    EXPECT_EQ(onDisk(), "a01 a02 a03 a00 a04 a05");
    EXPECT_THAT(history(), ElementsAre("Moved"));
    EXPECT_THAT(runningApps.asked, IsEmpty()) << "a drag opens nothing";
}

TEST_F(ArrangeTest, OntoAnAppMakesAFolderWhoseNameIsTyped) {
    openWith(4);
    carry("app:a00", middleOf("app:a02"));
    EXPECT_TRUE(tile("app:a02")->property("targeted").toBool());
    letGo();
    EXPECT_EQ(onDisk(), "a01 [New folder: a02 a00] a03");
    EXPECT_THAT(history(), ElementsAre("Made_a_folder"));
    ASSERT_TRUE(
        eventually([&] { return window().activeFocusItem()->property("text") == "New folder"; }));
    type("Tools");
    press(Qt::Key_Return);
    EXPECT_EQ(onDisk(), "a01 [Tools: a02 a00] a03");
    EXPECT_EQ(state->query(), "") << "a name is no search";
    type("a03");
    EXPECT_EQ(state->query(), "a03") << "afterwards the keys search again";
}

TEST_F(ArrangeTest, OnTheBackgroundItGoesToTheEnd) {
    openWith(4);
    carry("app:a01", QPoint(window().width() / 2, window().height() - 200));
    letGo();
    EXPECT_EQ(onDisk(), "a00 a02 a03 a01");
    EXPECT_THAT(history(), ElementsAre("Moved_to_end"));
}

TEST_F(ArrangeTest, EscapeDuringADragPutsItBack) {
    openWith(4);
    carry("app:a00", atShare("app:a03", 0.9));
    press(Qt::Key_Escape);
    letGo();
    EXPECT_EQ(onDisk(), "a00 a01 a02 a03");
    EXPECT_TRUE(controller->isShown());
    EXPECT_TRUE(eventually([&] { return tile("app:a00")->opacity() == 1; }));
}

TEST_F(ArrangeTest, HeldAtTheEdgeItTurnsThePage) {
    openWith(40);
    carry("app:a00", QPoint(window().width() - 6, middleOf("app:a00").y()));
    ASSERT_TRUE(eventually([&] { return state->page() == 1; }));
    settle();
    const QPoint last = atShare("app:a39", 0.9);
    QTest::mouseMove(&window(), last);
    QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, last);
    EXPECT_EQ(model->visibleTiles().back().id(), "app:a00");
}

TEST_F(ArrangeTest, OutOfAnOpenFolderOntoTheGrid) {
    const Tile tools = test::folder(5, "Tools", {"a", "b"});
    open({"a", "b", "c", "d"}, board({tools, app("c"), app("d")}));
    click(tools.id());
    settle();
    carry("app:a", QPoint(30, window().height() - 30));
    ASSERT_TRUE(eventually([&] { return !state->openFolder(); })) << "held outside, it closes";
    settle();
    const QPoint place = atShare("app:d", 0.95);
    QTest::mouseMove(&window(), place);
    QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_EQ(onDisk(), "[Tools: b] c d a");
    EXPECT_EQ(history().front(), "Moved_out_of_folder");
}

TEST_F(ArrangeTest, ARescanThatRemovesTheCarriedAppEndsTheDragQuietly) {
    openWith(4);
    carry("app:a00", atShare("app:a03", 0.9));
    catalogue.uninstall("a00");
    model->rescan();
    settle();
    letGo();
    EXPECT_EQ(onDisk(), "a01 a02 a03");
    click("app:a01");
    EXPECT_THAT(runningApps.asked, ElementsAre("open a01"));
}

// --- Selecting ---

TEST_F(ArrangeTest, CtrlClickAndABandSelect) {
    openWith(10);
    click("app:a03", Qt::ControlModifier);
    EXPECT_THAT(state->selected(), ElementsAre("a03"));
    EXPECT_THAT(runningApps.asked, IsEmpty());
    // From above the first tile's corner to the middle of the ninth: columns 0 and 1 of two rows.
    const QPoint from(20, middleOf("app:a00").y() - 60);
    carry(from, middleOf("app:a08"));
    letGo();
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
    ASSERT_TRUE(eventually([&] { return window().activeFocusItem()->property("text") == "A01"; }));
    type("Better");
    press(Qt::Key_Return);
    EXPECT_EQ(model->name("a01"), "Better");

    press(Qt::Key_Right);
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

TEST_F(ArrangeTest, EscapeLeavesANameAsItWas) {
    openWith(2);
    press(Qt::Key_Right);
    press(Qt::Key_F2);
    ASSERT_TRUE(eventually([&] { return window().activeFocusItem()->property("text") == "A00"; }));
    type("x");
    press(Qt::Key_Escape);
    EXPECT_EQ(model->name("a00"), "A00");
    EXPECT_TRUE(controller->isShown());
    EXPECT_FALSE(state->renaming());
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

void namesOf(QAccessibleInterface* item, std::vector<std::string>& nameless) {
    if (item == nullptr || item->state().invisible) {
        return;
    }
    const auto role = item->role();
    const bool isControl = role == QAccessible::Button || role == QAccessible::EditableText ||
                           role == QAccessible::MenuItem || role == QAccessible::PageTab ||
                           role == QAccessible::ListItem || role == QAccessible::Dialog;
    if (isControl && item->text(QAccessible::Name).isEmpty()) {
        nameless.push_back(item->object()->metaObject()->className());
    }
    for (int i = 0; i < item->childCount(); ++i) {
        namesOf(item->child(i), nameless);
    }
}

TEST_F(ArrangeTest, EveryControlHasANameInEveryView) {
    openWith(50);
    QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&window());
    std::vector<std::string> nameless;
    namesOf(tree, nameless);
    EXPECT_THAT(nameless, IsEmpty());
    EXPECT_GE(countOf(tree, QAccessible::Button), 20);
    EXPECT_EQ(countOf(tree, QAccessible::PageTab), state->pageCount());

    rightClick(middleOf("app:a01"));
    settle();
    namesOf(tree, nameless);
    EXPECT_GE(countOf(tree, QAccessible::MenuItem), 6);
    press(Qt::Key_Escape);
    model->sortByUse();
    model->moveToEnd("app:a01");
    for (const auto panel : {LauncherState::Panel::history, LauncherState::Panel::hiddenApps,
                             LauncherState::Panel::emoji, LauncherState::Panel::settings}) {
        state->setPanel(panel);
        settle();
        EXPECT_EQ(countOf(tree, QAccessible::Dialog), 1);
        namesOf(tree, nameless);
    }
    EXPECT_THAT(nameless, IsEmpty());
}

} // namespace
} // namespace vellory::test
