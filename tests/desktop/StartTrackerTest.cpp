// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/StartTracker.h"

#include <gtest/gtest.h>

namespace vellory::test {
namespace {

/// The launcher has begun 1000 seconds after the machine.
struct StartTrackerTest : testing::Test {
    StartTracker tracker{1000};
};

TEST_F(StartTrackerTest, AWindowOfANewProcessIsAStart) {
    EXPECT_TRUE(tracker.windowsCame("mail", {.processStart = 1010}, 1011));
    EXPECT_TRUE(tracker.windowsCame("web", {.processStart = std::nullopt}, 1011));
}

TEST_F(StartTrackerTest, WhatRanBeforeTheLauncherIsNone) {
    EXPECT_FALSE(tracker.windowsCame("tray", {.processStart = 900}, 1100));
    tracker.found("early", "");
    tracker.windowsWent("early", 1200);
    EXPECT_FALSE(tracker.windowsCame("early", {.processStart = 900}, 1300));
}

TEST_F(StartTrackerTest, AWindowThatComesBackIsNoneUntilAYoungerProcessBringsIt) {
    EXPECT_TRUE(tracker.windowsCame("mail", {.processStart = 1010}, 1011));
    tracker.windowsWent("mail", 1012); // a splash window that looks like any other
    EXPECT_FALSE(tracker.windowsCame("mail", {.processStart = 1010}, 1014));
    tracker.windowsWent("mail", 2000); // to the tray
    EXPECT_FALSE(tracker.windowsCame("mail", {.processStart = 1010}, 3000));
    tracker.windowsWent("mail", 3001);
    // The splash had a process of its own, which the main one outlived.
    EXPECT_FALSE(tracker.windowsCame("mail", {.processStart = 2999}, 3002));
    tracker.windowsWent("mail", 4000);
    EXPECT_TRUE(tracker.windowsCame("mail", {.processStart = 4001}, 4002));
}

// Apps that stay in the background open windows from one process, whoever asks for them.
TEST_F(StartTrackerTest, AnAnnouncedWindowOfAnOldProcessIsAStartOncePerAnnouncement) {
    EXPECT_TRUE(tracker.windowsCame("files", {.processStart = 900, .startupId = "a"}, 1100));
    tracker.windowsWent("files", 1200);
    EXPECT_FALSE(tracker.windowsCame("files", {.processStart = 900, .startupId = "a"}, 1300));
    tracker.windowsWent("files", 1400);
    EXPECT_TRUE(tracker.windowsCame("files", {.processStart = 900, .startupId = "b"}, 1500));
    tracker.windowsWent("files", 1600);
    EXPECT_TRUE(tracker.windowsCame("files", {.processStart = 900, .isExpected = true}, 1700));
    // A splash window without an id, and the app's own with one: one start.
    EXPECT_TRUE(tracker.windowsCame("draw", {.processStart = 1800}, 1801));
    tracker.windowsWent("draw", 1802);
    EXPECT_FALSE(tracker.windowsCame("draw", {.processStart = 1800, .startupId = "c"}, 1803));
}

TEST_F(StartTrackerTest, AUnitAndTheWindowThatFollowsAreOneStart) {
    EXPECT_TRUE(tracker.unitCame("mail", "app-x-mail-1.scope", 1010));
    EXPECT_FALSE(tracker.unitCame("mail", "app-x-mail-2.scope", 1011)); // a helper of it
    // A slow one, and announced.
    EXPECT_FALSE(tracker.windowsCame("mail", {.processStart = 1012, .startupId = "a"}, 1090));
    tracker.windowsWent("mail", 1100);
    EXPECT_FALSE(tracker.windowsCame("mail", {.processStart = 1012}, 1200)) << "it still runs";
    tracker.windowsWent("mail", 1300);
    tracker.unitWent("app-x-mail-1.scope", 1300);
    tracker.unitWent("app-x-mail-2.scope", 1301);
    EXPECT_TRUE(tracker.unitCame("mail", "app-x-mail-3.scope", 1400));
    tracker.unitWent("app-x-mail-3.scope", 1401); // it failed before it had a window
    EXPECT_TRUE(tracker.windowsCame("mail", {.processStart = 1450}, 1451));
}

TEST_F(StartTrackerTest, AUnitOfAnAppWithWindowsIsNoStart) {
    EXPECT_TRUE(tracker.windowsCame("terminal", {.processStart = 1010}, 1011));
    EXPECT_FALSE(tracker.unitCame("terminal", "app-terminal-tab-7.scope", 2000));
    tracker.unitWent("app-other-1.scope", 2001); // never heard of
}

} // namespace
} // namespace vellory::test
