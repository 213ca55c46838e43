// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FakeService.h"
#include "LauncherOnDesktop.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/desktop/LinuxDesktop.h"
#include "platform/linux/desktop/SoundPlayer.h"
#include "platform/linux/desktop/Wallpaper.h"
#include "platform/linux/windows/X11Connection.h"
#include "support/FakeHttpClient.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class LinuxDesktopTest : public LauncherOnDesktop {
  protected:
    FakeHttpClient http;
};

TEST_F(LinuxDesktopTest, BadgesFollowWhatAppsAnnounce) {
    begin();
    const LinuxDesktop desktop(session.environment(), *apps, http, loop);
    EXPECT_THAT(desktop.badges(), IsEmpty());
    {
        FakeService mail(session, "org.test.Mail");
        const auto say = [&](const char* uri, const char* properties) {
            mail.emit("/app", "com.canonical.Unity.LauncherEntry", "Update",
                      g_variant_new("(s@a{sv})", uri, g_variant_new_parsed(properties)));
        };
        // Until the listener is there, signals go by.
        ASSERT_TRUE(loop.runUntil([&] {
            say("application://mail.desktop", "{'count': <int64 3>, 'count-visible': <true>}");
            return !desktop.badges().empty();
        }));
        EXPECT_THAT(desktop.badges(), ElementsAre(Pair("mail", "3")));
        for (const char* uri :
             {"mail.desktop", "application://mail", "application://.desktop", ""}) {
            say(uri, "{'count': <int64 9>, 'count-visible': <true>}");
        }
        say("application://wrong.desktop", "{'count': <'9'>, 'count-visible': <true>}");
        say("application://mail.desktop", "{'count': <int64 4>}"); // Still visible.
        EXPECT_TRUE(loop.runUntil([&] { return desktop.badges().at("mail") == "4"; }));
        EXPECT_EQ(desktop.badges().size(), 1U);
        say("application://mail.desktop", "{'count-visible': <false>}");
        EXPECT_TRUE(loop.runUntil([&] { return desktop.badges().empty(); }));
        say("application://mail.desktop", "{'count-visible': <true>}");
        EXPECT_TRUE(loop.runUntil([&] { return desktop.badges().size() == 1; }));
    }
    EXPECT_TRUE(loop.runUntil([&] { return desktop.badges().empty(); })) << "the app has quit";
}

TEST_F(LinuxDesktopTest, WithoutABusThereIsNothing) {
    begin();
    const SessionEnvironment bare{{"HOME=/"}};
    const LinuxDesktop desktop(bare, *apps, http, loop);
    EXPECT_THAT(desktop.badges(), IsEmpty());
    EXPECT_THAT(desktop.openFolders(), IsEmpty());
    EXPECT_THAT(desktop.openTabs(), IsEmpty());
    EXPECT_EQ(desktop.backdrop({0, 0, 100, 100}), std::nullopt);
}

TEST_F(LinuxDesktopTest, BackdropIsTheRootPictureElseTheScreen) {
    begin();
    const LinuxDesktop desktop(session.environment(), *apps, http, loop);
    const auto connection = X11Connection::open(session.environment().value("DISPLAY"));
    const auto paint = [&](xcb_drawable_t drawable, std::uint32_t colour) {
        const xcb_gcontext_t context = xcb_generate_id(connection->get());
        const std::vector<std::uint32_t> values{colour, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
        xcb_create_gc(connection->get(), context, drawable,
                      XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE, values.data());
        const xcb_rectangle_t all{0, 0, 1280, 800};
        xcb_poly_fill_rectangle(connection->get(), drawable, context, 1, &all);
        xcb_free_gc(connection->get(), context);
    };
    const auto backdrop = [&](const Desktop::Area& area) {
        connection->serverTime(); // All that was sent has been done.
        return desktop.backdrop(area);
    };
    paint(connection->root(), 0x112233);
    const auto still = backdrop({1200, 700, 200, 200});
    ASSERT_TRUE(still.has_value()); // As much of the display as the screen has.
    EXPECT_EQ(*still, (Image{80, 100, std::vector<std::uint32_t>(8000, 0xFF112233)}));

    const xcb_pixmap_t picture = xcb_generate_id(connection->get());
    xcb_create_pixmap(connection->get(), connection->screen().root_depth, picture,
                      connection->root(), 1280, 800);
    paint(picture, 0x445566);
    const auto setRootPicture = [&](std::uint32_t value) {
        xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, connection->root(),
                            connection->atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP, 32, 1, &value);
    };
    setRootPicture(picture);
    EXPECT_EQ(backdrop({0, 0, 2, 2}), (Image{2, 2, std::vector<std::uint32_t>(4, 0xFF445566)}));
    setRootPicture(0x1FFFFFF); // Left over from a program that is gone.
    EXPECT_EQ(backdrop({0, 0, 1, 1}), (Image{1, 1, {0xFF112233}}));
    for (const Desktop::Area& area :
         {Desktop::Area{5000, 0, 10, 10}, Desktop::Area{0, 0, 0, 10}, Desktop::Area{0, 0, -5, 10},
          Desktop::Area{0, 0, 1 << 30, 1 << 30}}) {
        EXPECT_EQ(backdrop(area), std::nullopt);
    }
}

// There is no sound system in the session: nobody waits and nothing fails.
TEST_F(LinuxDesktopTest, SoundsWithoutASoundSystemAreSilent) {
    begin();
    LinuxDesktop desktop(session.environment(), *apps, http, loop);
    desktop.playSound("Glass");
    desktop.playSound("no such sound\n");
    EXPECT_EQ(SoundPlayer::eventFor("Glass"), "complete");
    EXPECT_EQ(SoundPlayer::eventFor("../x"), "bell");
}

TEST_F(LinuxDesktopTest, FoldersAreThoseTheFileManagerShows) {
    begin();
    const LinuxDesktop desktop(session.environment(), *apps, http, loop);
    EXPECT_THAT(desktop.openFolders(), IsEmpty()) << "and nobody is started to be asked";
    FakeService manager(session, "org.freedesktop.FileManager1");
    EXPECT_THAT(desktop.openFolders(), IsEmpty()) << "an answer of another kind";
    manager.answer("GetAll",
                   "({'OpenLocations': <['file:///b%20c/%C3%B6', 'trash:///', 'file:///a', "
                   "'file:///a', 'relative', 'file://elsewhere/x', '']>},)");
    EXPECT_THAT(desktop.openFolders(), ElementsAre("/b c/\u00f6", "/a"));
    manager.answer("GetAll",
                   "({'OpenLocations': <['file:///a', 'file:///z']>, 'OpenWindowsWithLocations': "
                   "<{'/w/1': ['file:///z', 'file:///y'], '/w/2': @as []}>},)");
    EXPECT_THAT(desktop.openFolders(), ElementsAre("/z", "/y", "/a"));
    manager.answer("GetAll", "({'OpenLocations': <5>},)");
    EXPECT_THAT(desktop.openFolders(), IsEmpty());
}

TEST(Wallpaper, FirstPictureOfASlideShow) {
    const TemporaryFolder folder;
    struct Row {
        const char* content;
        std::optional<std::filesystem::path> picture;
    };
    for (const Row& row : std::vector<Row>{
             {"<background><static><duration>8</duration><file> /a/b.jpg </file></static>"
              "<static><file>/c.jpg</file></static></background>",
              "/a/b.jpg"},
             {"<background><static><file>\n<size width='1' height='1'>/a/s.png</size></file>"
              "</static></background>",
              "/a/s.png"},
             {"<background><static><file>relative.jpg</file></static></background>", std::nullopt},
             {"<background>", std::nullopt},
             {"no xml", std::nullopt},
             {"", std::nullopt}}) {
        EXPECT_EQ(Wallpaper::firstOfSlideShow(folder.write("show.xml", row.content)), row.picture)
            << row.content;
    }
}

} // namespace
} // namespace vellory::test
