// SPDX-License-Identifier: Apache-2.0
#include "view/LauncherWindow.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>

#include "shell/search/SearchGrid.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SearchViewTest : public testing::Test, public LauncherWindow {
  protected:
    /// What a delegate that can be seen shows; empty for none.
    static QString shown(const QQuickItem* item, const char* property) {
        const auto* cell = item == nullptr ? nullptr : item->property("cell").value<SearchCell*>();
        return cell == nullptr ? QString() : cell->property(property).toString();
    }
    /// Every delegate of the results that can be seen.
    std::vector<QQuickItem*> cells() {
        std::vector<QQuickItem*> out;
        auto* grid = root().findChild<SearchGrid*>();
        for (QQuickItem* child : grid->childItems()) {
            if (child->isVisible()) {
                out.push_back(child);
            }
        }
        return out;
    }
    std::vector<QString> titles() {
        std::vector<QString> out;
        for (QQuickItem* cell : cells()) {
            out.push_back(shown(cell, "title"));
        }
        std::ranges::sort(out);
        return out;
    }
    QQuickItem* cellWith(const QString& title) {
        const auto all = cells();
        const auto found = std::ranges::find_if(
            all, [&](const QQuickItem* cell) { return shown(cell, "title") == title; });
        return found == all.end() ? nullptr : *found;
    }
    void clickOn(const QQuickItem* item) {
        ASSERT_NE(item, nullptr);
        QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, pointOn(item, "it"));
    }
};

TEST_F(SearchViewTest, AResultThatStaysKeepsItsDelegateAndTheOthersAreFilledAnew) {
    openWith(60);
    type("a0");
    ASSERT_TRUE(eventually([&] { return tile("app:a05") != nullptr; }));
    QQuickItem* const kept = tile("app:a05");
    // A screenful and a row are made ahead.
    const auto* grid = root().findChild<SearchGrid*>();
    const auto ahead = (state->rows() + 1) * state->columns();
    ASSERT_TRUE(eventually([&] { return grid->childItems().size() >= ahead; }));
    const auto before = grid->childItems();
    type("5");
    ASSERT_TRUE(eventually([&] { return tile("app:a06") == nullptr; }));
    EXPECT_EQ(tile("app:a05"), kept);
    EXPECT_TRUE(shown(kept, "highlighted") == "true");
    press(Qt::Key_Backspace);
    press(Qt::Key_Backspace);
    type("1");
    ASSERT_TRUE(eventually([&] { return tile("app:a19") != nullptr; }));
    for (QQuickItem* cell : cells()) {
        EXPECT_TRUE(before.contains(cell)) << "no delegate was made anew";
    }
}

TEST_F(SearchViewTest, MatchedLettersStandOutAndNamesAreNoMarkup) {
    openWith(3);
    model->rename("a01", "A <b>& Co</b>");
    type("co");
    EXPECT_TRUE(eventually([&] {
        return shown(tile("app:a01"), "marked") ==
               "A &lt;b&gt;&amp; <font color=\"#ffffff\">Co</font>&lt;/b&gt;";
    }));
    EXPECT_EQ(shown(tile("app:a01"), "title"), "A <b>& Co</b>");
}

TEST_F(SearchViewTest, SectionsStandBelowOneAnotherUnderTheirHeadings) {
    for (const char* id : {"a00", "a01", "a02"}) {
        catalogue.infos[id] = {
            .dictionary = {{"LSApplicationCategoryType", {"public.app-category.music"}}},
            .texts = {}};
    }
    openWith(3);
    model->rename("a01", "Music");
    type("music");
    ASSERT_TRUE(eventually([&] { return cells().size() == 4; }));
    EXPECT_THAT(titles(), ElementsAre("A00", "A02", "By what they do", "Music"));
    EXPECT_LT(cellWith("Music")->y(), cellWith("By what they do")->y());
    EXPECT_LT(cellWith("By what they do")->y(), cellWith("A00")->y());
    EXPECT_EQ(cellWith("A00")->y(), cellWith("A02")->y());
    EXPECT_EQ(shown(cellWith("A00"), "marked"), "") << "nothing of its name was typed";
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_THAT(runningApps.asked, ElementsAre("open a00"));
}

TEST_F(SearchViewTest, ClicksCopyTheSumAndTheEmojiThatWereClicked) {
    openWith(3);
    type("12*7");
    ASSERT_TRUE(eventually([&] { return cellWith("84") != nullptr; }));
    clickOn(cellWith("84"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "84");
    EXPECT_FALSE(controller->isShown());
    show();
    type(":heart");
    ASSERT_TRUE(eventually([&] { return cellWith("green heart") != nullptr; }));
    clickOn(cellWith("green heart"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "💚");
    EXPECT_THAT(runningApps.asked, IsEmpty());
}

TEST_F(SearchViewTest, TheListScrollsWithTheHighlightAndBackUpWithTheNextKey) {
    openWith(100);
    type("a");
    ASSERT_TRUE(eventually([&] { return tile("app:a00") != nullptr; }));
    press(Qt::Key_End);
    ASSERT_TRUE(eventually([&] { return tile("app:a99") != nullptr; }));
    EXPECT_EQ(tile("app:a00"), nullptr);
    EXPECT_LE(middleOf("app:a99").y(), window().height());
    type("1");
    ASSERT_TRUE(eventually([&] { return tile("app:a10") != nullptr; }));
    EXPECT_EQ(shown(tile("app:a10"), "highlighted"), "true");
}

// A word and Return in one go: no wrong app, whatever has been drawn by then.
TEST_F(SearchViewTest, TypingAndReturnWithoutWaitingNeverOpensAWrongApp) {
    openWith(100);
    state->setKeepOpen(true);
    int wrong = 0;
    for (int run = 0; run < 300; ++run) {
        const std::string id = numbered(100)[static_cast<std::size_t>(run * 37 % 100)];
        runningApps.asked.clear();
        runningApps.completions.clear();
        type(id.c_str());
        press(Qt::Key_Return);
        wrong += runningApps.asked == std::vector{"open " + id} ? 0 : 1;
        press(Qt::Key_Escape);
        if (run % 20 == 0) {
            settle(); // sometimes the views keep up, mostly they do not
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(SearchViewTest, TextsThatNobodyTypesFindNothingAndAreTakenBack) {
    openWith(100);
    const QString lone = QString(QChar(0xD83D));
    for (const QString& text :
         {QString(100'000, 'a'), QString(100'000, '('), QString("1+").repeated(500'000),
          lone + "a" + lone, QString(50'000, QChar(0x301)),
          QString("\u202Eשלום a").repeated(100)}) {
        QGuiApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
        settle();
        press(Qt::Key_Return);
        EXPECT_THAT(runningApps.asked, IsEmpty()) << text.left(3).toStdString();
        press(Qt::Key_Escape);
        EXPECT_FALSE(state->searching());
    }
    EXPECT_NE(tile("app:a00"), nullptr);
}

TEST_F(SearchViewTest, AFilterSaysWhatItIsAndIsLiftedUntilTheLauncherHides) {
    openWith(6);
    Workspace writing;
    writing.id = uuid(7);
    writing.items = {Workspace::Item::app("a02")};
    model->workspaces().update(writing);
    model->setFocusFilter(GridFilter{.name = "Deep work", .onlyWorkspace = uuid(7)});
    EXPECT_TRUE(eventually([&] { return tile("app:a00") == nullptr; }));
    auto* const chip = root().findChild<QQuickItem*>("filterChip");
    ASSERT_NE(chip, nullptr);
    EXPECT_TRUE(chip->isVisible());
    clickOn(chip);
    EXPECT_TRUE(eventually([&] { return tile("app:a00") != nullptr; }));
    controller->hide();
    show();
    EXPECT_TRUE(eventually([&] { return tile("app:a00") == nullptr; }));
    model->setFocusFilter(std::nullopt);
    EXPECT_TRUE(eventually([&] {
        return tile("app:a00") != nullptr && root().findChild<QQuickItem*>("filterChip") == nullptr;
    }));
}

} // namespace
} // namespace vellory::test
