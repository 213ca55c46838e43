// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/AppPresence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto quit = AppPresence::Missing::quit;

/// The launcher has begun 1000 seconds after the machine; "tray" ran before it, without a window.
struct AppPresenceTest : testing::Test {
    std::set<BundleID> expected;
    AppPresence presence{
        {.processStart = [](std::int64_t pid) { return double(pid); },
         .isExpected = [this](const BundleID& id) { return expected.contains(id); }},
        1000};

    /// The process of each window began when its number says.
    static AppWindow window(xcb_window_t number, const BundleID& app, std::int64_t began) {
        return {.window = number, .app = app, .pid = began};
    }
};

TEST_F(AppPresenceTest, AStartIsTheFirstWindowOfAProcessAndTheEndTheLastToGo) {
    presence.begin({window(1, "old", 900)});
    auto news = presence.compare({window(1, "old", 900), window(2, "new", 1010)}, quit, 1011);
    EXPECT_THAT(news.launched, ElementsAre("new"));
    EXPECT_THAT(news.withNewWindows, ElementsAre("new"));
    EXPECT_FALSE(news.isChangedBeside);
    news = presence.compare({window(3, "new", 1010), window(4, "old", 900)}, quit, 1012);
    EXPECT_THAT(news.launched, IsEmpty());
    EXPECT_THAT(news.quit, IsEmpty()) << "other windows have taken the place of the first";
    EXPECT_THAT(news.withNewWindows, ElementsAre("new", "old"));
    news = presence.compare({window(4, "old", 900)}, quit, 1013);
    EXPECT_THAT(news.quit, ElementsAre("new"));
    EXPECT_THAT(presence.compare({}, quit, 1014).quit, ElementsAre("old"));
}

TEST_F(AppPresenceTest, BackFromTheTrayIsNoStartUnlessSomebodyWaitsForIt) {
    presence.begin({});
    auto news = presence.compare({window(1, "tray", 900)}, quit, 1100);
    EXPECT_THAT(news.launched, IsEmpty());
    EXPECT_TRUE(news.isChangedBeside);
    presence.compare({}, quit, 1200);
    expected.insert("tray");
    news = presence.compare({window(2, "tray", 900)}, quit, 1300);
    EXPECT_THAT(news.launched, ElementsAre("tray"));
    EXPECT_FALSE(news.isChangedBeside);
}

TEST_F(AppPresenceTest, NobodyHasQuitWhileAWindowManagerTakesOver) {
    presence.begin({window(1, "a", 900), window(2, "b", 900)});
    auto news = presence.compare({window(1, "a", 900)}, AppPresence::Missing::stillListed, 1010);
    EXPECT_THAT(news.quit, IsEmpty());
    news = presence.compare({window(1, "a", 900), window(2, "b", 900)}, quit, 1013);
    EXPECT_THAT(news.launched, IsEmpty());
    EXPECT_FALSE(news.isChangedBeside);
    EXPECT_THAT(presence.compare({window(1, "a", 900)}, quit, 1014).quit, ElementsAre("b"));
}

} // namespace
} // namespace vellory::test
