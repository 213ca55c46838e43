// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "model/World.h"

namespace vellory::test {

using testing::ElementsAre;
using testing::IsEmpty;

struct InstalledApps : testing::Test {
    World world;
    AppModel& model = world.startWith({"a"}, board({app("a")}));
};

TEST_F(InstalledApps, ABurstOfChangesLeadsToOneRescanTwoSecondsAfterTheLast) {
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

TEST_F(InstalledApps, ARescanTellsOfWhatIsNewInOneNoticeOnceTheUserWasWelcomed) {
    world.gridChanges = 0;
    model.rescan();
    EXPECT_THAT(world.history(), IsEmpty());
    EXPECT_THAT(world.notices, IsEmpty());
    EXPECT_EQ(world.gridChanges, 0) << "all is as it was";
    world.install({"b", "c"});
    model.rescan();
    EXPECT_EQ(world.lastNotice(), "2 new apps added");

    World fresh;
    fresh.start();
    fresh.install({"b"});
    fresh.model->rescan();
    EXPECT_EQ(fresh.grid(), "b");
    EXPECT_THAT(fresh.notices, IsEmpty());
}

TEST_F(InstalledApps, AHiddenAppThatIsInstalledAgainStaysHidden) {
    world.install({"b"});
    model.rescan();
    model.hide({"b"});
    world.catalogue.uninstall("b");
    model.rescan();
    EXPECT_EQ(world.inMemory(), "a");

    world.install({"b"});
    model.rescan();
    EXPECT_EQ(world.inMemory(), "a b");
    EXPECT_EQ(world.grid(), "a");
    model.unhide("b");
    EXPECT_EQ(world.grid(), "a b");
}

TEST_F(InstalledApps, AnUpdatedNameIsShownWithoutAStepInTheHistory) {
    world.catalogue.installed.front().name = "Alpha";
    world.gridChanges = 0;
    model.rescan();
    EXPECT_EQ(model.name("a"), "Alpha");
    EXPECT_EQ(model.search("alpha"), std::vector<BundleID>{"a"});
    EXPECT_GT(world.gridChanges, 0);
    EXPECT_THAT(world.history(), IsEmpty());
}

TEST_F(InstalledApps, TheFirstOfTwoAppsWithOneIdentifierCounts) {
    world.catalogue.install("b", "First");
    world.catalogue.install("b", "Second");
    model.rescan();
    EXPECT_EQ(world.grid(), "a b");
    EXPECT_EQ(model.name("b"), "First");
}

TEST_F(InstalledApps, ExtraFoldersAreScannedLastAndEveryScanWatchesWhereItLooked) {
    world.install({"extra"});
    model.prefs().setExtraFolders({"/opt/apps"});
    const std::vector<std::filesystem::path> both{"/apps", "/opt/apps"};
    EXPECT_EQ(world.catalogue.scans.back(), both);
    EXPECT_EQ(world.folderWatcher.watched.back(), both);
    EXPECT_EQ(world.grid(), "a extra");

    world.catalogue.subfolders = {"/apps/wine"};
    world.folderWatcher.changed();
    world.scheduler.advance(2);
    EXPECT_THAT(world.folderWatcher.watched.back(),
                ElementsAre("/apps", "/opt/apps", "/apps/wine"));
    const std::size_t before = world.folderWatcher.watched.size();
    model.rescan();
    EXPECT_EQ(world.folderWatcher.watched.size(), before + 1)
        << "a folder may be another one under the same name";
}

TEST_F(InstalledApps, AWatcherThatOutlivesTheModelTellsNobody) {
    world.folderWatcher.changed();
    world.model.reset();
    EXPECT_EQ(world.folderWatcher.changed, nullptr);
    EXPECT_EQ(world.runningApps.observer.launched, nullptr);
    const std::size_t scans = world.catalogue.scans.size();
    world.scheduler.advance(100);
    EXPECT_EQ(world.catalogue.scans.size(), scans);
}

} // namespace vellory::test
