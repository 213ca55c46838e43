// SPDX-License-Identifier: Apache-2.0
#include <functional>

#include <gmock/gmock.h>

#include "model/World.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

const std::vector<BundleID> apps{"a", "b", "c", "d", "e"};

Board usualBoard() {
    return board({app("b"), folder(1, "Work", {"c", "d"}), app("a"), app("e")});
}

struct Edit {
    std::string reason;
    std::string expected;
    std::function<void(AppModel&)> doIt;
};

const std::vector<Edit>& edits() {
    static const std::vector<Edit> all{
        {"Moved", "[Work: c d] a b e", [](AppModel& m) { m.moveTile("app:b", 3); }},
        {"Moved", "a b [Work: c d] e", [](AppModel& m) { m.moveApp("a", 0); }},
        {"Moved out of folder", "b [Work: c] a d e", [](AppModel& m) { m.moveApp("d", 3); }},
        {"Moved out of folder", "b [Work: d] c a e", [](AppModel& m) { m.moveOutOfFolder("c"); }},
        {"Moved", "b [Work: d c] a e", [](AppModel& m) { m.moveInFolder(uuid(1), "c", 2); }},
        {"Moved to end", "[Work: c d] a e b", [](AppModel& m) { m.moveToEnd("app:b"); }},
        {"Moved to end", "b [Work: d] a e c", [](AppModel& m) { m.moveToEnd("app:c"); }},
        {"Made a folder", "b [Work: c d] [New folder: a e]",
         [](AppModel& m) { EXPECT_EQ(m.drop("e", "app:a"), uuid(1000)); }},
        {"Moved", "[Work: c d b] a e",
         [](AppModel& m) { EXPECT_EQ(m.drop("b", "folder:" + uuid(1).string()), uuid(1)); }},
        {"New folder", "b [Work: c] a [Play: e d]",
         [](AppModel& m) { EXPECT_EQ(m.makeFolder({"e", "d", "nobody"}, "Play"), uuid(1000)); }},
        {"Renamed folder", "b [Jobs: c d] a e",
         [](AppModel& m) { m.renameFolder(uuid(1), " Jobs "); }},
        {"Broke up Work", "b c d a e", [](AppModel& m) { m.dissolveFolder(uuid(1)); }},
        {"Sorted A–Z", "a b e [Work: c d]", [](AppModel& m) { m.sortAlphabetically(); }},
        {"Auto folders", "[Finance: a b] c d e", [](AppModel& m) { m.autoFolders(); }},
        {"Hid C", "b [Work: c d] a e", [](AppModel& m) { m.hide({"c"}); }},
        {"Hid 2 apps", "b [Work: c d] a e", [](AppModel& m) { m.hide({"c", "a", "a"}); }},
        {"Renamed Notes", "b [Work: c d] a e", [](AppModel& m) { m.rename("a", " Notes "); }},
    };
    return all;
}

struct BoardEdits : testing::Test {
    World world;
    AppModel& model = world.startWith(apps, usualBoard());
};

TEST_F(BoardEdits, EachIsOneStepNamedByItsReasonSavedAndConfirmed) {
    for (const Edit& edit : edits()) {
        SCOPED_TRACE(edit.reason + ": " + edit.expected);
        World fresh;
        fresh.catalogue.categories = {{"a", "public.app-category.finance"},
                                      {"b", "public.app-category.finance"}};
        fresh.startWith(apps, usualBoard());
        edit.doIt(*fresh.model);

        EXPECT_EQ(fresh.inMemory(), edit.expected);
        EXPECT_EQ(fresh.store().load(), fresh.model->board());
        EXPECT_THAT(fresh.history(), ElementsAre(Text::replacingAll(edit.reason, " ", "_")));
        ASSERT_EQ(fresh.notices.size(), 1U);
        EXPECT_EQ(fresh.lastNotice(), edit.reason);
        EXPECT_EQ(fresh.notices.back().seconds, 1.8);
    }
}

TEST_F(BoardEdits, WhatChangesNothingLeavesNoStep) {
    model.moveTile("app:b", 1);
    model.moveTile("app:nobody", 0);
    model.moveApp("nobody", 0);
    model.moveOutOfFolder("a");
    model.drop("a", "app:a");
    model.drop("nobody", "app:a");
    model.drop("a", "app:nobody");
    model.makeFolder({"nobody"});
    model.renameFolder(uuid(1), "  ");
    model.renameFolder(uuid(9), "Jobs");
    model.dissolveFolder(uuid(9));
    model.hide({});
    model.unhide("a");
    model.rename("a", "A");
    model.rename("nobody", "Somebody");
    model.resetIcon("a");
    model.restore({.date = {}, .reason = "Moved", .url = world.folder.path() / "nothing.json"});
    EXPECT_EQ(model.board(), usualBoard());
    EXPECT_THAT(world.history(), IsEmpty());
    EXPECT_THAT(world.notices, IsEmpty());

    World single;
    single.startWith({"a"}, board({folder(1, "Work", {"a"})}));
    EXPECT_EQ(single.model->drop("a", "folder:" + uuid(1).string()), std::nullopt);
    EXPECT_EQ(single.inMemory(), "[Work: a]") << "onto the folder that it is alone in";
}

TEST_F(BoardEdits, PlacesCountWhatIsShownAndHiddenAppsKeepTheirs) {
    struct Case {
        BundleID moved;
        int place;
        std::string expected;
    };
    const auto moves = [](const std::vector<BundleID>& apps, Board start, const auto& move,
                          const std::vector<Case>& cases) {
        start.hidden = {"h", "h2"};
        for (const Case& each : cases) {
            World fresh;
            move(fresh.startWith(apps, start), each);
            EXPECT_EQ(fresh.inMemory(), each.expected) << each.moved << each.place;
        }
    };
    const std::vector<BundleID> onGrid{"h", "b", "h2", "d", "e"};
    moves(onGrid, boardOf(onGrid),
          [](AppModel& m, const Case& each) { m.moveTile("app:" + each.moved, each.place); },
          {{"e", 0, "h e b h2 d"},
           {"e", 1, "h b h2 e d"},
           {"e", 2, "h b h2 d e"},
           {"e", 99, "h b h2 d e"},
           {"e", -5, "h e b h2 d"}});
    const std::vector<BundleID> inFolder{"h", "a", "b", "c"};
    moves(inFolder, board({folder(1, "Work", inFolder)}),
          [](AppModel& m, const Case& each) { m.moveInFolder(uuid(1), each.moved, each.place); },
          {{"c", 0, "[Work: h c a b]"},
           {"a", 2, "[Work: h b a c]"},
           {"a", 9, "[Work: h b c a]"},
           {"b", 1, "[Work: h a b c]"},
           {"nobody", 0, "[Work: h a b c]"}});
}

TEST_F(BoardEdits, AFailedSaveIsToldKeepsTheBoardAndIsTriedAgain) {
    // A regular file where the folder should be: nobody can write into that, whoever they are.
    std::filesystem::remove_all(world.paths().support());
    world.folder.write("vellory", "in the way");

    model.dissolveFolder(uuid(1));
    ASSERT_EQ(world.notices.size(), 1U) << "no confirmation of what was not saved";
    EXPECT_THAT(world.lastNotice(), StartsWith("Couldn't save the layout: "));
    EXPECT_GT(world.lastNotice().size(), std::string("Couldn't save the layout: ").size());
    EXPECT_EQ(world.notices.back().symbol, "exclamationmark.triangle");
    EXPECT_EQ(world.notices.back().seconds, 3.0);
    EXPECT_EQ(world.grid(), "b c d a e");

    std::filesystem::remove(world.paths().support());
    model.moveToEnd("app:b");
    EXPECT_EQ(world.onDisk(), "c d a e b");
    EXPECT_EQ(world.lastNotice(), "Moved to end");
}

TEST_F(BoardEdits, SortingByUseAsksHowOftenAppsWereLaunched) {
    for (const char* id : {"d", "d", "e"}) {
        world.runningApps.observer.launched(id);
    }
    model.sortByUse();
    EXPECT_EQ(world.grid(), "[Work: c d] e b a");
    EXPECT_EQ(world.lastNotice(), "Sorted by use");
}

TEST_F(BoardEdits, AutoFoldersRearrangeButKeepNamesIconsAndWhatIsHidden) {
    World fresh;
    Board start = usualBoard();
    start.hidden = {"e"};
    start.renames = {{"a", "Zulu"}};
    start.icons = {{"b", "/icons/b.png"}};
    fresh.startWith(apps, start);
    fresh.model->autoFolders();
    EXPECT_EQ(fresh.grid(), "a b c d");
    EXPECT_EQ(fresh.model->board().renames, start.renames);
    EXPECT_EQ(fresh.model->board().icons, start.icons);
}

TEST_F(BoardEdits, AnEmptyNameOrTheAppsOwnGivesTheNameBack) {
    for (const std::string name : {"", "  ", "A"}) {
        model.rename("a", "Notes");
        EXPECT_EQ(model.search("notes"), std::vector<BundleID>{"a"});
        model.rename("a", name);
        EXPECT_EQ(model.name("a"), "A");
        EXPECT_THAT(model.board().renames, IsEmpty());
        EXPECT_EQ(world.lastNotice(), "Renamed A");
    }
}

TEST_F(BoardEdits, AnEarlierBoardIsRestoredWithTheAppsOfToday) {
    world.clock.time = Date::since1970(1'800'000'000);
    model.dissolveFolder(uuid(1));
    world.scheduler.advance(1);
    world.catalogue.uninstall("a");
    world.install({"new"});
    model.rescan();
    EXPECT_EQ(world.grid(), "b c d e new");

    world.scheduler.advance(1);
    model.restore(model.snapshots().back());
    EXPECT_EQ(world.onDisk(), "b [Work: c d] e new");
    EXPECT_EQ(world.grid(), world.onDisk());
    EXPECT_EQ(world.notices.back(), (Notice{"Layout restored", "clock.arrow.circlepath", 1.8}));
    EXPECT_EQ(world.history().front(), "Restored_2027-01-15_08:00");

    world.scheduler.advance(1);
    model.restore(model.snapshots().front());
    EXPECT_EQ(world.grid(), "b c d e new") << "restoring can be undone";

    const auto steps = world.history();
    const std::size_t told = world.notices.size();
    world.scheduler.advance(1);
    model.restore(model.snapshots().at(1));
    EXPECT_EQ(world.history(), steps) << "as it is already";
    EXPECT_EQ(world.notices.size(), told + 1);
}

TEST_F(BoardEdits, ChosenPicturesAreCopiedAndTheEarlierOneIsFoundAgain) {
    const auto choose = [&](const std::string& content, const std::string& told) {
        world.scheduler.advance(1);
        world.notices.clear();
        world.gridChanges = 0;
        world.imageChooser.choose(world.folder.write("pictures/cat.PNG", content));
        EXPECT_EQ(world.notices.size(), 1U) << content;
        EXPECT_EQ(world.lastNotice(), told);
        EXPECT_EQ(world.gridChanges, 1) << content;
    };
    const auto icon = [&] { return std::filesystem::path(model.board().icons.at("a")); };
    model.chooseIcon("a");
    EXPECT_THAT(world.imageChooser.titles, ElementsAre("Icon for A"));
    EXPECT_THAT(world.history(), IsEmpty()) << "not before the user chose";
    choose("meow", "Icon for A");
    EXPECT_EQ(contentOf(icon()), "meow");
    EXPECT_EQ(icon().parent_path(), world.paths().icons());
    choose("woof", "Icon for A");
    EXPECT_EQ(contentOf(icon()), "woof") << "another one of the same kind is seen";
    model.restore(model.snapshots().front());
    EXPECT_EQ(contentOf(icon()), "meow");

    model.chooseCover(uuid(1));
    choose("meow", "Folder cover");
    choose("woof", "Folder cover");
    EXPECT_EQ(contentOf(*model.board().folder(uuid(1))->cover), "woof");

    model.resetIcon("a");
    EXPECT_THAT(model.board().icons, IsEmpty());
    EXPECT_EQ(world.lastNotice(), "Reset icon for A");
    model.resetCover(uuid(1));
    EXPECT_EQ(model.board().folder(uuid(1))->cover, std::nullopt);
    model.chooseIcon("a");
    world.imageChooser.choose(world.folder.path() / "missing.png");
    EXPECT_THAT(world.lastNotice(), StartsWith("Couldn't use the picture: "));
    EXPECT_THAT(model.board().icons, IsEmpty());
}

TEST_F(BoardEdits, PicturesThatNoBoardCanShowAnyMoreGo) {
    const auto own = world.folder.write("vellory/Icons/own.png", "put there by the user");
    model.chooseIcon("a");
    std::filesystem::path kept;
    for (int i = 0; i < 70; ++i) {
        world.scheduler.advance(1);
        world.imageChooser.choose(world.folder.write("picture.png", std::to_string(i)));
        if (i == 3) {
            model.saveLayout("Mine");
            kept = model.board().icons.at("a");
        }
    }
    EXPECT_EQ(namesIn(world.paths().icons()).size(), 60U + 2U + 1U)
        << "the history, today, the layout and the user";
    EXPECT_EQ(contentOf(kept), "3");
    EXPECT_EQ(contentOf(own), "put there by the user");
    for (const auto& step : model.snapshots()) {
        EXPECT_TRUE(std::filesystem::exists(model.boardIn(step)->icons.at("a")));
    }

    world.folder.write("vellory/SavedLayouts/Mine.json", "cannot be read");
    world.scheduler.advance(1);
    world.imageChooser.choose(world.folder.write("picture.png", "70"));
    EXPECT_EQ(contentOf(kept), "3") << "nobody knows what that layout shows";
}

TEST_F(BoardEdits, AChoiceThatComesTooLateDoesNothing) {
    const auto picture = world.folder.write("cat.png", "meow");
    model.chooseIcon("a");
    const auto chooseIcon = world.imageChooser.choose;
    model.chooseCover(uuid(1));
    world.catalogue.uninstall("a");
    model.rescan();
    chooseIcon(picture);
    EXPECT_THAT(model.board().icons, IsEmpty()) << "the app is gone";
    world.model.reset();
    world.imageChooser.choose(picture);
    EXPECT_FALSE(std::filesystem::exists(world.paths().icons())) << "the model is gone";
}

} // namespace
} // namespace vellory::test
