// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/World.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(InstalledApps, ABurstOfChangesLeadsToOneRescanTwoSecondsAfterTheLast) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.install({"mail"});
    const std::size_t scans = world.catalogue.scans.size();

    for (int event = 0; event < 5; ++event) {
        world.folderWatcher.changed();
        world.scheduler.advance(1.5);
    }
    EXPECT_EQ(world.catalogue.scans.size(), scans);
    world.scheduler.advance(0.49);
    EXPECT_EQ(world.catalogue.scans.size(), scans) << "1.99 s after the last event";
    world.scheduler.advance(0.01);
    EXPECT_EQ(world.catalogue.scans.size(), scans + 1);
    EXPECT_EQ(world.onDisk(), "a mail");
    EXPECT_THAT(world.notices, ElementsAre(Notice{"MAIL added to vellory", "plus.app", 1.8}));
    EXPECT_THAT(world.history(), ElementsAre("Apps_changed"));

    world.scheduler.advance(50);
    EXPECT_EQ(world.catalogue.scans.size(), scans + 1) << "once";
}

TEST(InstalledApps, ARescanThatFindsTheSameSavesNothingAndSaysNothing) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.gridChanges = 0;
    world.model->rescan();
    EXPECT_THAT(world.history(), IsEmpty());
    EXPECT_THAT(world.notices, IsEmpty());
    EXPECT_EQ(world.gridChanges, 0);
}

TEST(InstalledApps, SeveralNewAppsAreToldInOneNotice) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.install({"b", "c"});
    world.model->rescan();
    EXPECT_EQ(world.lastNotice(), "2 new apps added");
}

TEST(InstalledApps, NewAppsAreNotToldBeforeTheUserWasWelcomed) {
    World world;
    world.install({"a"});
    world.start();
    world.install({"b"});
    world.model->rescan();
    EXPECT_EQ(world.grid(), "a b");
    EXPECT_THAT(world.notices, IsEmpty());
}

TEST(InstalledApps, TheLastAppOfAFolderTakesTheFolderWithIt) {
    World world;
    world.startWith({"a", "b"}, board({folder(1, "Work", {"b"}), app("a")}));
    world.catalogue.uninstall("b");
    world.model->rescan();
    EXPECT_EQ(world.onDisk(), "a");
}

TEST(InstalledApps, AHiddenAppThatIsInstalledAgainStaysHidden) {
    World world;
    world.startWith({"a", "b"}, board({app("a"), app("b")}));
    world.model->hide({"b"});
    world.catalogue.uninstall("b");
    world.model->rescan();
    EXPECT_EQ(world.inMemory(), "a");

    world.install({"b"});
    world.model->rescan();
    EXPECT_EQ(world.inMemory(), "a b");
    EXPECT_EQ(world.grid(), "a");
    world.model->unhide("b");
    EXPECT_EQ(world.grid(), "a b");
}

TEST(InstalledApps, AnUpdatedNameIsShownWithoutAStepInTheHistory) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.catalogue.installed.front().name = "Alpha";
    world.gridChanges = 0;
    world.model->rescan();
    EXPECT_EQ(world.model->name("a"), "Alpha");
    EXPECT_EQ(world.model->search("alpha"), std::vector<BundleID>{"a"});
    EXPECT_GT(world.gridChanges, 0);
    EXPECT_THAT(world.history(), IsEmpty());
}

TEST(InstalledApps, TheFirstOfTwoAppsWithOneIdentifierCounts) {
    World world;
    world.catalogue.install("a", "First");
    world.catalogue.install("a", "Second");
    world.leaveBoard(board({}));
    world.start();
    EXPECT_EQ(world.grid(), "a");
    EXPECT_EQ(world.model->name("a"), "First");
}

TEST(InstalledApps, ExtraFoldersAreScannedLastAndWatchedFromThenOn) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.install({"extra"});
    world.model->prefs().setExtraFolders({"/opt/apps"});
    const std::vector<std::filesystem::path> both{"/apps", "/opt/apps"};
    EXPECT_EQ(world.catalogue.scans.back(), both);
    EXPECT_EQ(world.folderWatcher.watched.back(), both);
    EXPECT_EQ(world.grid(), "a extra");
}

TEST(InstalledApps, EveryScanWatchesWhereItLooked) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.catalogue.subfolders = {"/apps/wine"};
    const std::size_t before = world.folderWatcher.watched.size();
    world.folderWatcher.changed();
    world.scheduler.advance(2);
    ASSERT_EQ(world.folderWatcher.watched.size(), before + 1);
    EXPECT_THAT(world.folderWatcher.watched.back(), ElementsAre("/apps", "/apps/wine"));
    world.model->rescan();
    EXPECT_EQ(world.folderWatcher.watched.size(), before + 2)
        << "a folder may be another one under the same name";
}

TEST(InstalledApps, AWatcherThatOutlivesTheModelTellsNobody) {
    World world;
    world.startWith({"a"}, board({app("a")}));
    world.folderWatcher.changed();
    world.model.reset();
    EXPECT_EQ(world.folderWatcher.changed, nullptr);
    EXPECT_EQ(world.runningApps.observer.launched, nullptr);
    const std::size_t scans = world.catalogue.scans.size();
    world.scheduler.advance(100);
    EXPECT_EQ(world.catalogue.scans.size(), scans);
}

} // namespace vellory::test
