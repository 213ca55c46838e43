// SPDX-License-Identifier: Apache-2.0
#include "view/LauncherWindow.h"

#include <gmock/gmock.h>

#include <QAccessible>

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LauncherWindowTest : public testing::Test, public LauncherWindow {};

// --- Opening apps ---

TEST_F(LauncherWindowTest, ClicksAndKeysOpenAppsAndTheLauncherHides) {
    openWith(10);
    click("app:a01");
    EXPECT_FALSE(controller->isShown());
    EXPECT_FALSE(window().isVisible());
    show();
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    EXPECT_TRUE(tile("app:a08")->property("highlighted").toBool()); // 7 columns: 1 + 7
    press(Qt::Key_Return);
    EXPECT_FALSE(controller->isShown());
    show();
    press(Qt::Key_End);
    press(Qt::Key_Return, Qt::ControlModifier);
    show();
    QTest::mouseClick(&window(), Qt::MiddleButton, Qt::NoModifier, middleOf("app:a00"));
    EXPECT_THAT(runningApps.asked, ElementsAre("open a01", "open a08", "new a09", "new a00"));
}

TEST_F(LauncherWindowTest, ClosingTheWindowHidesItAndItCanBeShownAgain) {
    openWith(3);
    window().close();
    EXPECT_FALSE(controller->isShown());
    show();
    EXPECT_NE(tile("app:a00"), nullptr);
}

// --- Suggestions and settings ---

TEST_F(LauncherWindowTest, TheSmartRowStandsAboveTheGridAndTakesItsRoomFromIt) {
    openWith(40);
    const auto gridHeight = [&] {
        return tile("app:a00")->property("grid").value<QQuickItem*>()->height();
    };
    const double before = gridHeight();
    runningApps.starts("a39");
    runningApps.quits("a39");
    controller->hide();
    show();
    EXPECT_LT(gridHeight(), before);
    QQuickItem* suggested = tile("app:a39"); // on the last page of the grid: seen in the row only
    ASSERT_NE(suggested, nullptr);
    EXPECT_LT(suggested->mapToScene({0, suggested->height()}).y(),
              tile("app:a00")->mapToScene({0, 0}).y() + 1);
    click("app:a39");
    EXPECT_THAT(runningApps.asked, ElementsAre("open a39"));
    EXPECT_FALSE(controller->isShown());
    show();
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_EQ(runningApps.asked.size(), 2U);
}

TEST_F(LauncherWindowTest, AHabitIsAnsweredInItsBarByPointerOrKeyboard) {
    openWith(5);
    for (int i = 0; i < 3; ++i) {
        for (const char* id : {"a00", "a01", "a02"}) {
            runningApps.starts(id);
            runningApps.quits(id);
        }
        scheduler.advance(86'400);
    }
    scheduler.runBackground();
    scheduler.deliver();
    settle();
    const auto tabTo = [&](const QString& text) {
        for (int i = 0; i < 30 && window().activeFocusItem()->property("text") != text; ++i) {
            press(Qt::Key_Tab);
        }
    };
    tabTo("Open it at that time");
    press(Qt::Key_Space);
    EXPECT_TRUE(controller->suggestions().opensAtTime());
    press(Qt::Key_Tab); // to the button, whose text depends on the room
    press(Qt::Key_Return);
    ASSERT_EQ(model->workspaces().all().size(), 1U);
    EXPECT_EQ(model->workspaces().all().at(0).triggers.size(), 1U);
    type("a03"); // the keyboard is back where it was
    press(Qt::Key_Return);
    EXPECT_THAT(runningApps.asked, ElementsAre("open a03"));
}

TEST_F(LauncherWindowTest, SettingsOpenOverTheGridAndKeysStayInThem) {
    openWith(3);
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(state->panel(), LauncherState::Panel::settings);
    settle();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(controller->settings().page(), 2);
    settle();
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    EXPECT_EQ(model->prefs().smartListMode(), Prefs::SmartListMode::recent);
    press(Qt::Key_Escape);
    EXPECT_EQ(state->panel(), LauncherState::Panel::none);
    EXPECT_TRUE(controller->isShown());
    type("a01");
    EXPECT_EQ(state->query(), "a01");
}

// The settings ask for what they show in whichever window they stand.
TEST_F(LauncherWindowTest, SettingsHaveAWindowOfTheirOwnWhenTheGridIsNotThere) {
    openWith(3);
    constexpr int unusedPage = 3;
    controller->settings().setPage(unusedPage);
    const auto lists = [&](const QQuickWindow& in, int apps) {
        return eventually([&] { return countOf(accessible(in), QAccessible::ListItem) == apps; });
    };
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(lists(window(), 3));
    controller->showSettings();
    EXPECT_FALSE(controller->isShown());
    ASSERT_NE(controller->settingsWindow(), nullptr);
    EXPECT_TRUE(controller->settingsWindow()->isVisible());
    EXPECT_EQ(controller->settingsWindow()->title(), "vellory Settings");
    EXPECT_EQ(controller->settingsWindow()->errors().size(), 0);
    EXPECT_TRUE(lists(*controller->settingsWindow(), 3));
    const QQuickWindow& own = *controller->settingsWindow();
    EXPECT_NE(controlOf(own, "A01"), nullptr);
    runningApps.starts("a01");
    EXPECT_TRUE(lists(own, 2));
    EXPECT_EQ(controlOf(own, "A01"), nullptr);
}

TEST_F(LauncherWindowTest, NoticesAreSeenAlsoWithoutTheGrid) {
    openWith(3);
    model->notices().post(Notice::confirmation("Seen on the grid"));
    EXPECT_FALSE(controller->noticeWindow()->isShown());
    NoticeList early;
    early.post(Notice::confirmation("Posted before there was a window"));
    EXPECT_TRUE(NoticeWindow(*controller->window().engine(), early).isShown());
    controller->hide();
    EXPECT_TRUE(controller->noticeWindow()->isShown());
    controller->show();
    EXPECT_FALSE(controller->noticeWindow()->isShown());
}

// --- Typing ---

TEST_F(LauncherWindowTest, TypingSearchesFromTheFirstKeyAndEscapeClearsItAndThenHides) {
    openWith(12);
    type("a11");
    EXPECT_EQ(state->query(), "a11");
    EXPECT_TRUE(
        eventually([&] { return tile("app:a11") != nullptr && tile("app:a03") == nullptr; }));
    press(Qt::Key_Escape);
    settle();
    EXPECT_NE(tile("app:a03"), nullptr);
    EXPECT_TRUE(controller->isShown());
    press(Qt::Key_Escape);
    EXPECT_FALSE(controller->isShown());
}

// --- Folders ---

TEST_F(LauncherWindowTest, AFolderOpensOverTheGridAndClosesByEscapeOrAClickBeside) {
    const Tile tools = test::folder(5, "Tools", {"a", "b"});
    open({"a", "b", "c"}, board({tools, app("c")}));
    const std::string id = tools.id();
    EXPECT_EQ(tile("app:a"), nullptr);

    click(id);
    settle();
    EXPECT_NE(tile("app:a"), nullptr);
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(tile("app:a"), nullptr);
    EXPECT_TRUE(controller->isShown());

    click(id);
    settle();
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, {4, 4});
    settle();
    EXPECT_EQ(tile("app:a"), nullptr);

    click(id);
    settle();
    click("app:b");
    EXPECT_THAT(runningApps.asked, ElementsAre("open b"));
}

// --- Pages ---

TEST_F(LauncherWindowTest, KeysWheelDragAndDotsTurnPages) {
    openWith(100);
    const int perPage = state->columns() * state->rows();
    const std::string first = "app:a00";
    const std::string onSecond = "app:a" + std::to_string(perPage);
    const auto shows = [&](const std::string& id) {
        settle();
        return tile(id) != nullptr;
    };

    press(Qt::Key_PageDown);
    EXPECT_TRUE(shows(onSecond));
    EXPECT_FALSE(shows(first));
    press(Qt::Key_PageUp);
    EXPECT_TRUE(shows(first));

    turnWheel();
    EXPECT_EQ(state->page(), 1);
    EXPECT_TRUE(shows(onSecond));

    // From the margin to the right by a third of the width: back to the first page.
    const QPoint margin(8, window().height() / 2);
    const QPoint third = margin + QPoint(window().width() / 3, 0);
    carry(margin, third);
    EXPECT_NE(tile(first), nullptr) << "the page before slides into view under the finger";
    letGo(third);
    EXPECT_EQ(state->page(), 0);
    EXPECT_TRUE(shows(first));
    EXPECT_THAT(runningApps.asked, IsEmpty()) << "a drag opens nothing";

    state->goToPage(1);
    EXPECT_TRUE(shows(onSecond));
}

TEST_F(LauncherWindowTest, AListScrollsToEveryAppAndShowsNothingOutsideItsRoom) {
    defaults.set("displayMode", std::string("list"));
    openWith(100);
    const std::string last = "app:a99";
    EXPECT_EQ(tile(last), nullptr);
    for (int notch = 0; notch < 30; ++notch) {
        turnWheel();
    }
    settle();
    EXPECT_EQ(tile("app:a00"), nullptr);
    ASSERT_NE(tile(last), nullptr);
    const QRectF room(QPointF(), window().size());
    EXPECT_TRUE(room.contains(tile(last)->mapRectToScene(tile(last)->boundingRect())));
    press(Qt::Key_Home); // to the first of those in view, then to the first of all
    press(Qt::Key_Home);
    settle();
    ASSERT_NE(tile("app:a00"), nullptr);
    EXPECT_EQ(tile(last), nullptr);
    press(Qt::Key_End);
    settle();
    click(last);
    EXPECT_THAT(runningApps.asked, ElementsAre("open a99"));
}

TEST_F(LauncherWindowTest, ATileCarriedToTheEndOfAListScrollsIt) {
    defaults.set("displayMode", std::string("list"));
    openWith(100);
    const auto* grid = tile("app:a00")->property("grid").value<QQuickItem*>();
    const QPoint from = middleOf("app:a00");
    const QPoint to = grid->mapToScene({from.x() + 0.0, grid->height() - 8}).toPoint();
    carry(from, to);
    EXPECT_TRUE(
        eventually([&] { return state->view().position() == state->view().list().last(); }));
    settle();
    letGo(to);
    const auto& tiles = model->visibleTiles();
    const auto moved = std::ranges::find(tiles, "app:a00", &Tile::id) - tiles.begin();
    EXPECT_GE(moved, 98 - state->columns()) << "dropped on the last line";
}

// --- Keeping delegates ---

TEST_F(LauncherWindowTest, ATileKeepsItsDelegateWhenTheGridChangesAroundIt) {
    openWith(6);
    QQuickItem* const kept = tile("app:a04");
    const QPointF before = kept->position();
    model->moveTile("app:a00", 6);
    settle();
    EXPECT_EQ(tile("app:a04"), kept);
    EXPECT_TRUE(eventually([&] { return kept->x() < before.x(); }));
    type("a04");
    settle();
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(tile("app:a04"), kept) << "clearing a search makes nothing anew";
    model->rename("a04", "Other name");
    EXPECT_TRUE(eventually([&] { return kept->property("title").toString() == "Other name"; }));
    EXPECT_EQ(tile("app:a04"), kept);
}

TEST_F(LauncherWindowTest, RightToLeftStartsAtTheRight) {
    openWith(3);
    const QPoint first = middleOf("app:a00");
    state->setRightToLeft(true);
    settle();
    EXPECT_EQ(middleOf("app:a00").x(), window().width() - first.x());
    EXPECT_LT(middleOf("app:a01").x(), middleOf("app:a00").x());
}

// --- What is shown ---

TEST_F(LauncherWindowTest, NoTileLiesOverAnotherOrLeavesTheWindowAtAnySize) {
    openWith(60);
    const auto ids = numbered(60);
    for (const QSize size : {QSize(640, 480), QSize(1280, 800), QSize(2560, 1080)}) {
        window().showNormal();
        window().resize(size);
        ASSERT_TRUE(eventually([&] { return root().size() == QSizeF(size); }));
        settle();
        std::vector<QRectF> places;
        for (int i = 0; i < state->columns() * state->rows() && i < 60; ++i) {
            const QQuickItem* item = tile("app:" + ids[static_cast<std::size_t>(i)]);
            ASSERT_NE(item, nullptr) << i;
            const QRectF place = item->mapRectToScene(QRectF({}, item->size()));
            EXPECT_TRUE(QRectF(QPointF(), size).contains(place)) << i;
            for (const QRectF& other : places) {
                // Half a pixel of rounding is nothing to see.
                EXPECT_FALSE(other.intersects(place.adjusted(0.5, 0.5, -0.5, -0.5))) << i;
            }
            places.push_back(place);
        }
    }
}

} // namespace
} // namespace vellory::test
