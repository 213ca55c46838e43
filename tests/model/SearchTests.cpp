// SPDX-License-Identifier: Apache-2.0
#include <random>

#include <gmock/gmock.h>

#include "model/Launcher.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

using Kind = SearchResults::Kind;
using Mode = SearchResults::Mode;

AppInfo infoOf(const std::string& category, std::vector<std::string> texts = {}) {
    return {.dictionary = {{"LSApplicationCategoryType", {"public.app-category." + category}}},
            .texts = std::move(texts)};
}

/// A launcher over a few apps whose names and purposes are known.
struct Desk : Launcher {
    Desk() {
        const std::vector<std::pair<const char*, const char*>> apps{
            {"gone", "Blurry"},    {"shots", "Darkroom"}, {"files", "Dateien"}, {"notes", "Écrits"},
            {"calc", "Numbers 7"}, {"photos", "Photos"},  {"paint", "Pinta"}};
        Board grid;
        for (const auto& [id, name] : apps) {
            catalogue.install(id, name);
            grid.tiles.emplace_back(id);
        }
        grid.hidden = {"gone"};
        catalogue.infos = {{"shots", infoOf("photography")},
                           {"photos", infoOf("photography")},
                           {"gone", infoOf("photography")},
                           {"paint", infoOf("graphics-design", {"Draw and retouch"})},
                           {"notes", infoOf("productivity")},
                           {"files", {.dictionary = {}, .texts = {"Browser", "Folders"}}}};
        leaveBoard(grid);
        start();
        show();
    }

    const SearchResults& found(const std::string& query) {
        state->setQuery(query);
        return state->search().results();
    }
    std::string highlighted() {
        const auto cell = state->search().highlight();
        return cell ? state->search().results().cellID(*cell) : "";
    }
};

struct Search : testing::Test {
    Desk desk;
};

TEST_F(Search, PurposesComeByScoreThenByTheNameTheUserGave) {
    AppModel& model = *desk.model;
    EXPECT_THAT(model.purposeSearch("edit photos"), ElementsAre("gone", "shots", "photos"));
    EXPECT_THAT(model.purposeSearch("photo"), ElementsAre("gone", "shots", "photos", "paint"));
    EXPECT_THAT(model.purposeSearch("photo", {"shots", "gone"}), ElementsAre("photos", "paint"));
    model.rename("paint", "Aquarelle");
    model.rename("shots", "Zoom");
    EXPECT_THAT(model.purposeSearch("photo"), ElementsAre("paint", "gone", "photos", "shots"));
    model.rescan();
    EXPECT_THAT(model.purposeSearch("photo"), ElementsAre("paint", "gone", "photos", "shots"))
        << "a scan that finds nothing new keeps the order";
    EXPECT_THAT(model.purposeSearch("open the app"), IsEmpty()) << "says nothing";
    EXPECT_THAT(model.purposeSearch("folders"), ElementsAre("files")) << "by an extra text";

    // The words follow every scan.
    desk.catalogue.infos["files"].texts = {"Archive"};
    desk.model->rescan();
    EXPECT_THAT(desk.model->purposeSearch("archive"), ElementsAre("files"));
    EXPECT_THAT(desk.model->purposeSearch("folders"), IsEmpty());
    desk.catalogue.uninstall("photos");
    desk.model->rescan();
    EXPECT_THAT(model.purposeSearch("edit photos"), ElementsAre("gone", "shots"));
}

TEST_F(Search, NamesComeBeforePurposesAndHiddenAppsStayHidden) {
    const SearchResults& found = desk.found("photo");
    EXPECT_THAT(found.byName, ElementsAre("photos"));
    EXPECT_THAT(found.byPurpose, ElementsAre("shots", "paint")) << "none twice";
    EXPECT_EQ(found.sections(),
              (std::vector<SearchResults::Section>{{Kind::name, 0, 1}, {Kind::purpose, 1, 2}}));
    EXPECT_EQ(desk.highlighted(), "app:photos");
    EXPECT_THAT(desk.found("blurry").byName, IsEmpty());
    desk.model->unhide("gone");
    EXPECT_THAT(desk->search().results().byName, ElementsAre("gone")) << "at once";
}

TEST_F(Search, ASumIsTheFirstRowAndReturnCopiesIt) {
    const SearchResults& found = desk.found("12*7");
    EXPECT_EQ(found.sum, "84");
    EXPECT_EQ(desk.highlighted(), "sum");
    EXPECT_TRUE(desk.press(Qt::Key_Return));
    EXPECT_THAT(desk.copied, ElementsAre("84"));
    EXPECT_EQ(desk.hides, 1);
    EXPECT_THAT(desk.asked(), IsEmpty());

    EXPECT_EQ(desk.found("1000000/2").sum, "500,000");
    for (const char* none : {"2024", "safari", "(1+2", "1/0"}) {
        EXPECT_EQ(desk.found(none).sum, std::nullopt) << none;
    }
}

// "pi" is a number, and how Pinta begins.
TEST_F(Search, ANumberThatIsAlsoTheBeginningOfANameDoesNotTakeReturn) {
    EXPECT_EQ(desk.found("pi").sum, "3.1415926536");
    EXPECT_EQ(desk.highlighted(), "app:paint");
    EXPECT_EQ(desk->highlight(), 0) << "the first of the apps";
    desk.press(Qt::Key_Return);
    EXPECT_THAT(desk.asked(), ElementsAre("open paint"));
    desk.press(Qt::Key_Up);
    desk.press(Qt::Key_Return);
    EXPECT_THAT(desk.copied, ElementsAre("3.1415926536"));
}

TEST_F(Search, AColonListsEmojiAndReturnCopiesTheHighlightedOne) {
    const SearchResults& found = desk.found(":sparkling heart");
    EXPECT_EQ(found.mode, Mode::emoji);
    EXPECT_THAT(found.emoji, SizeIs(1));
    desk.press(Qt::Key_Return);
    EXPECT_THAT(desk.copied, ElementsAre("💖"));
    EXPECT_THAT(desk.found(":").emoji, SizeIs(SearchResults::emojiLimit));
    desk.press(Qt::Key_Right);
    desk.press(Qt::Key_Return);
    EXPECT_EQ(desk.copied.back(), EmojiSearch::all()[1].emoji);
    EXPECT_THAT(desk->currentItems(), IsEmpty()) << "no app is among them";
}

TEST_F(Search, AQuestionMarkIsKeptForAsking) {
    for (const char* question : {"?", "? photos", "？photos"}) {
        EXPECT_EQ(desk.found(question).mode, Mode::ask) << question;
        EXPECT_EQ(desk.found(question).count(), 0) << question;
        EXPECT_FALSE(desk.press(Qt::Key_Return)) << question;
    }
    EXPECT_THAT(desk.asked(), IsEmpty());
}

TEST_F(Search, TheHighlightWalksThroughAllSections) {
    desk->setColumns(2);
    SearchResults found;
    found.sum = "1";
    found.byName = {"a", "b", "c"};
    found.byPurpose = {"d", "e", "f", "g"};
    struct Case {
        int from;
        GridNavigation::Move move;
        int to;
    };
    using GridNavigation::Move;
    // Rows: sum | a b | c | d e | f g
    const std::vector<Case> cases{
        {0, Move::down, 1},     {2, Move::down, 3},   {1, Move::up, 0},     {3, Move::down, 4},
        {5, Move::up, 3},       {6, Move::up, 4},     {7, Move::down, 7},   {0, Move::up, 0},
        {0, Move::back, 0},     {7, Move::on, 7},     {3, Move::on, 4},     {5, Move::first, 0},
        {1, Move::last, 7},     {0, Move::pageOn, 4}, {5, Move::pageOn, 7}, {7, Move::pageBack, 2},
        {1, Move::pageBack, 0},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(found.moved(each.from, each.move, 2, 3), each.to)
            << each.from << " " << static_cast<int>(each.move);
    }
}

TEST_F(Search, AnOpenFolderClosesAndEscapeRestoresThePage) {
    std::vector<BundleID> ids = numbered(80);
    Board grid = boardOf(ids);
    ids.emplace_back("inside");
    grid.tiles.push_back(folder(1, "Work", {"inside"}));
    Launcher launcher(ids, grid);
    launcher->goToPage(2);
    launcher->setOpenFolder(uuid(1));
    launcher.type("a");
    EXPECT_FALSE(launcher->openFolder());
    EXPECT_EQ(launcher->currentItems().size(), 80U) << "what is found is found everywhere";
    launcher.press(Qt::Key_Escape);
    EXPECT_FALSE(launcher->searching());
    EXPECT_EQ(launcher->page(), 2);
}

TEST_F(Search, WhatWasHighlightedStaysItWhenAppsChange) {
    desk.found("photo");
    desk.press(Qt::Key_Down);
    ASSERT_EQ(desk.highlighted(), "app:shots");
    desk.model->hide({"photos"});
    EXPECT_EQ(desk.highlighted(), "app:shots");
    desk.model->hide({"shots"});
    EXPECT_EQ(desk.highlighted(), "app:paint") << "the first one, when it is gone";
}

TEST_F(Search, TextsThatAreNoneFindNothingAndHarmNothing) {
    std::string deep(100'000, '(');
    std::string longSum = "1";
    while (longSum.size() < 1'000'000) {
        longSum += "+1";
    }
    std::string letters(100'000, 'p');
    for (const std::string& query : {deep, longSum, letters, ":" + letters, "?" + letters}) {
        EXPECT_EQ(desk.found(query).count(), 0) << query.substr(0, 8);
        EXPECT_FALSE(desk.press(Qt::Key_Return));
        // A long text can still be taken back.
        desk.press(Qt::Key_Backspace);
        EXPECT_EQ(desk->query().size(), query.size() - 1);
    }
    for (const std::string query : {"\xED\xA0\x80", "\xFF\xFE", "\u0301\u0301", "\u202Ephotos",
                                    "photos שלום 写真", "\u200D"}) {
        desk.found(query);
        desk.press(Qt::Key_Down);
        desk.press(Qt::Key_Backspace);
    }
    EXPECT_EQ(desk.found("\u0301").byName.size(), 6U) << "only marks are as good as nothing typed";
    EXPECT_THAT(desk.found("e\u0301crits").byName, ElementsAre("notes"));

    desk.catalogue.install("empty", "");
    desk.catalogue.install("blank", "   ");
    desk.model->rescan();
    EXPECT_THAT(desk.found("pho").byName, ElementsAre("photos"));
    EXPECT_EQ(desk.found(" ").byName.size(), 8U);
}

// Whatever is typed, erased and moved before, Return opens what the text as it stands finds first.
TEST_F(Search, TenThousandTimesReturnOpensTheMatchOfTheTextAsTyped) {
    Launcher launcher(60);
    std::mt19937 random(7);
    const std::vector<std::string> words{"photo", "disk", "text", "mail", "code", "note",
                                         "time",  "web",  "chat", "book", "star", "lab"};
    std::vector<std::string> names;
    for (const BundleID& id : numbered(60)) {
        names.push_back(words[random() % 12] + " " + words[random() % 12] + id);
        launcher.model->rename(id, names.back());
    }
    int wrong = 0;
    for (int run = 0; run < 10'000; ++run) {
        launcher->reset();
        launcher.runningApps.asked.clear();
        launcher.runningApps.completions.clear();
        std::string typed;
        const std::string& name = names[random() % names.size()];
        const auto length = 1 + random() % name.size();
        for (std::size_t i = 0; i < length; ++i) {
            if (random() % 8 == 0 && !typed.empty()) {
                launcher.press(Qt::Key_Backspace);
                typed.pop_back();
            }
            if (typed.empty() && name[i] == ' ') {
                continue; // begins no search
            }
            typed += name[i];
            launcher.type(QString(QChar(name[i])));
        }
        launcher->handleKey({Qt::Key_Return, Qt::NoModifier, "\r"});
        const auto best = launcher.model->search(typed);
        const std::vector<std::string> expected = best.empty() || typed.empty()
                                                      ? std::vector<std::string>{}
                                                      : std::vector{"open " + best.front()};
        wrong += launcher->query() == typed && launcher.asked() == expected ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace vellory::test
