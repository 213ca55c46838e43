// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DesktopSession.h"
#include "FakeService.h"
#include "platform/linux/desktop/LinuxFocusSource.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* notifications = "org.freedesktop.Notifications";

TEST(LinuxFocusSource, NobodyWhoTellsMeansItCannotBeRead) {
    LinuxFocusSource nowhere(SessionEnvironment{{"HOME=/"}});
    EXPECT_FALSE(nowhere.canRead());
    const DesktopSession session;
    LinuxFocusSource source(session.environment());
    EXPECT_FALSE(source.canRead());
    EXPECT_THAT(source.modes(), IsEmpty());
    EXPECT_EQ(source.active(), std::nullopt);
    FakeService service(session, notifications);
    service.answer("GetServerInformation", "('simple', 'nobody', '1', '1.2')");
    EXPECT_FALSE(source.canRead()) << "it shows notifications and has no such mode";
    service.answer("Get", "(<'a text'>,)");
    EXPECT_FALSE(source.canRead());
}

TEST(LinuxFocusSource, ModeIsWhereTheDesktopKeepsIt) {
    const DesktopSession session;
    LinuxFocusSource source(session.environment());
    FakeService service(session, notifications);
    for (const char* server : {"Plasma", "dunst"}) {
        service.answer("GetServerInformation",
                       std::string("('") + server + "', 'vendor', '1', '1.2')");
        service.answer("Get", "(<false>,)");
        EXPECT_TRUE(source.canRead());
        EXPECT_THAT(source.modes(), ElementsAre("Do Not Disturb"));
        EXPECT_EQ(source.active(), std::nullopt);
        service.answer("Get", "(<true>,)");
        EXPECT_EQ(source.active(), "Do Not Disturb");
    }
    const auto calls = service.calls();
    const auto asked = [&](const std::string& call) {
        return std::ranges::count(calls, "/org/freedesktop/Notifications "
                                         "org.freedesktop.DBus.Properties.Get " +
                                             call);
    };
    EXPECT_EQ(asked("('org.freedesktop.Notifications', 'Inhibited')"), 4);
    EXPECT_EQ(asked("('org.dunstproject.cmd0', 'paused')"), 4);
}

// Its service starts with the first notification; until then only the settings are there.
TEST(LinuxFocusSource, XfceKeepsItsModeInItsSettings) {
    const DesktopSession session;
    LinuxFocusSource source(session.environment());
    FakeService settings(session, "org.xfce.Xfconf");
    settings.answer("GetAllProperties", "(@a{sv} {},)");
    EXPECT_THAT(source.modes(), ElementsAre("Do not disturb"));
    EXPECT_EQ(source.active(), std::nullopt);
    settings.answer("GetAllProperties", "({'/theme': <'x'>, '/do-not-disturb': <true>},)");
    EXPECT_EQ(source.active(), "Do not disturb");
    FakeService service(session, notifications);
    service.answer("GetServerInformation", "('Xfce Notify Daemon', 'Xfce', '0.7', '1.2')");
    EXPECT_EQ(source.active(), "Do not disturb");
}

} // namespace
} // namespace vellory::test
