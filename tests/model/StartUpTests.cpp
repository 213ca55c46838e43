// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/stat.h>

#include <gmock/gmock.h>

#include "model/World.h"

namespace vellory::test {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

TEST(StartUp, TheFirstRunSortsTheAppsIntoFoldersByCategoryAndWelcomesTheUser) {
    World world;
    world.install({"bank", "chess", "editor", "go", "notes"});
    world.catalogue.categories = {{"chess", "public.app-category.board-games"},
                                  {"go", "public.app-category.games"},
                                  {"editor", "public.app-category.developer-tools"}};
    world.start();

    EXPECT_EQ(world.onDisk(), "[Games: chess go] bank editor notes") << "folders of two at least";
    EXPECT_EQ(world.grid(), world.onDisk());
    EXPECT_EQ(world.welcomes, 1);
    EXPECT_THAT(world.notices, IsEmpty());
    EXPECT_THAT(world.history(), IsEmpty());
}

TEST(StartUp, ALaterRunKeepsTheBoardAndOnlyAddsAndDropsWhatChanged) {
    World world;
    world.install({"a", "b", "new"});
    world.leaveBoard(board({folder(1, "Work", {"gone"}), app("b"), app("a")}));
    world.start();

    EXPECT_EQ(world.onDisk(), "b a new");
    EXPECT_EQ(world.lastNotice(), "NEW added to vellory");
    EXPECT_EQ(world.welcomes, 0);
    EXPECT_THAT(world.history(), IsEmpty()) << "nobody did anything";
}

TEST(StartUp, DamagedFilesReadAsEmptyAndTheBoardIsKeptBesideBeforeAFreshOneIsWritten) {
    const std::string futureTile = R"({"tiles": [{"widget": {"_0": "clock"}}]})";
    for (const std::string& content : {std::string("{\"tiles\": ["), std::string(), futureTile}) {
        World world;
        world.install({"a"});
        for (const char* file : {"layout", "usage", "launches", "workspaces"}) {
            world.folder.write(std::string("vellory/") + file + ".json", content);
        }
        world.start();

        EXPECT_EQ(world.onDisk(), "a");
        EXPECT_EQ(contentOf(world.paths().support() / "layout.json.unreadable"), content);
    }
}

TEST(StartUp, NothingIsEverSavedBeforeTheBoardWasLoaded) {
    World world;
    world.install({"a", "b"});
    world.leaveBoard(board({app("b"), app("a")}));
    const std::string stored = contentOf(world.paths().layout());

    AppModel& model = world.make();
    model.saveBoard("Moved");
    model.rescan();
    model.sortAlphabetically();
    model.hide({"a"});
    model.autoFolders();
    EXPECT_FALSE(model.isStarted());
    EXPECT_EQ(contentOf(world.paths().layout()), stored);

    model.start();
    EXPECT_TRUE(model.isStarted());
    EXPECT_EQ(world.grid(), "b a");
}

TEST(StartUp, AScanThatFindsNothingNeverEmptiesTheBoard) {
    World world;
    world.leaveBoard(board({folder(1, "Work", {"a", "b"}), app("c")}));
    world.start();
    EXPECT_EQ(world.onDisk(), "[Work: a b] c");
    EXPECT_EQ(world.grid(), "");

    world.install({"a", "b", "c"});
    world.model->rescan();
    EXPECT_EQ(world.grid(), "[Work: a b] c") << "back where they were";

    world.model->saveLayout("Mine");
    world.model->sortAlphabetically();
    const std::string sorted = world.onDisk();
    const auto before = world.model->snapshots().front();
    world.catalogue.installed.clear();
    world.model->rescan();
    EXPECT_EQ(world.onDisk(), sorted);
    world.model->autoFolders();
    EXPECT_EQ(world.onDisk(), sorted);
    world.model->restore(before);
    EXPECT_EQ(world.onDisk(), "[Work: a b] c");
    world.model->moveToEnd("folder:" + uuid(1).string());
    world.model->loadSavedLayout("Mine");
    EXPECT_EQ(world.onDisk(), "[Work: a b] c");
}

TEST(StartUp, AFirstRunThatFindsNothingLeavesTheFirstRunToTheNext) {
    for (const bool isDamaged : {false, true}) {
        World world;
        if (isDamaged) {
            world.folder.write("vellory/layout.json", "{\"tiles\": [");
        }
        world.start();
        EXPECT_EQ(world.grid(), "");
        EXPECT_EQ(std::filesystem::exists(world.paths().layout()), isDamaged);

        world.install({"a"});
        world.model->rescan();
        EXPECT_EQ(world.onDisk(), "a");
        EXPECT_EQ(std::filesystem::exists(world.paths().support() / "layout.json.unreadable"),
                  isDamaged);
    }
}

TEST(StartUp, WhatAKilledProgramLeftHalfWrittenGoesAfterADay) {
    World world;
    const auto leave = [&](const std::string& name, double hoursAgo) {
        const auto file = world.folder.write(std::filesystem::path("vellory") / name, "half");
        const timespec at{
            static_cast<time_t>(world.clock.time.secondsSince1970() - hoursAgo * 3600), 0};
        const timespec times[] = {at, at};
        ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    };
    for (const char* name :
         {".vellory.aB3xY9", "LayoutHistory/.vellory.aB3xY9", "Icons/.vellory.000000",
          ".vellory.notours", ".vellory.aB3-Y9", "Other/.vellory.aB3xY9"}) {
        leave(name, 25);
    }
    leave(".vellory.young1", 23);
    std::filesystem::create_directories(world.paths().support() / ".vellory.folder");
    std::filesystem::create_symlink("nowhere", world.paths().support() / ".vellory.linked");
    world.startWith({"a"}, board({app("a")}));
    EXPECT_THAT(namesIn(world.paths().support()),
                IsSupersetOf({".vellory.aB3-Y9", ".vellory.folder", ".vellory.linked",
                              ".vellory.notours", ".vellory.young1", "layout.json"}));
    EXPECT_THAT(namesIn(world.paths().support()), Not(Contains(".vellory.aB3xY9")));
    EXPECT_THAT(namesIn(world.paths().layoutHistory()), IsEmpty());
    EXPECT_THAT(namesIn(world.paths().icons()), IsEmpty());
    EXPECT_THAT(namesIn(world.paths().support() / "Other"), ElementsAre(".vellory.aB3xY9"));
}

TEST(StartUp, TheDockIconFollowsTheSettingAlsoLater) {
    World world;
    world.start();
    world.model->prefs().setShowInDock(true);
    EXPECT_THAT(world.desktop.policies, ElementsAre(Desktop::ActivationPolicy::accessory,
                                                    Desktop::ActivationPolicy::regular));
}

TEST(StartUp, TheModelTicksAsEachMinuteBegins) {
    World world;
    world.clock.time = Date::since1970(60'000 + 20);
    world.start();
    std::vector<double> ticks;
    QObject::connect(world.model.get(), &AppModel::ticked,
                     [&] { ticks.push_back(world.clock.time.secondsSince1970()); });
    world.scheduler.advance(160.5);
    EXPECT_THAT(ticks, ElementsAre(60'060, 60'120, 60'180));

    ticks.clear();
    world.scheduler.haste = 0.5;
    world.scheduler.advance(120);
    EXPECT_THAT(ticks, ElementsAre(60'240, 60'300)) << "once each, whatever the timers do";
}

} // namespace vellory::test
