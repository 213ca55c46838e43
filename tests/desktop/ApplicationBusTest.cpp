// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/ApplicationBus.h"

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DesktopSession.h"
#include "MainLoop.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/session/SessionBus.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ApplicationBusTest : public testing::Test {
  protected:
    ApplicationBusTest() {
        bus.emplace(session.environment(), loop, [this](LinkRequest request, LinkAnswer answer) {
            requests.push_back(std::move(request));
            answer(obeys);
        });
    }

    /// Calls a method with arguments written as text; the error, "" for none.
    std::string call(const std::string& interface, const std::string& method,
                     const std::string& arguments) {
        glib::Error wrong;
        GVariant* parsed =
            g_variant_parse(nullptr, arguments.c_str(), nullptr, nullptr, wrong.out());
        EXPECT_NE(parsed, nullptr) << wrong.message();
        const glib::Variant kept = glib::own(g_variant_ref_sink(parsed));
        std::optional<std::string> outcome;
        std::jthread caller([&] {
            const auto own = sessionBus(session.environment());
            glib::Error error;
            // Until the name is there nobody else can have it either.
            do {
                const glib::Variant answer = glib::own(g_dbus_connection_call_sync(
                    own.get(), ApplicationBus::name, ApplicationBus::path, interface.c_str(),
                    method.c_str(), kept.get(), nullptr, G_DBUS_CALL_FLAGS_NONE, 10'000, nullptr,
                    error.out()));
            } while (g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN));
            loop.inBackground([&outcome, text = error.message()] {
                return [&outcome, text] { outcome = text; };
            });
        });
        EXPECT_TRUE(loop.runUntil([&] { return outcome.has_value(); }));
        return outcome.value_or("no answer");
    }

    DesktopSession session;
    MainLoop loop;
    bool obeys = true;
    std::vector<LinkRequest> requests;
    std::optional<ApplicationBus> bus;
};

TEST_F(ApplicationBusTest, EveryCallIsALinkWithTheTokenOfTheWish) {
    const std::string app = "org.freedesktop.Application";
    EXPECT_EQ(call(app, "Activate", "({'desktop-startup-id': <'old_TIME7'>},)"), "");
    EXPECT_EQ(
        call(app, "Activate", "({'desktop-startup-id': <'old'>, 'activation-token': <'new'>},)"),
        "");
    EXPECT_EQ(call(app, "Open", "(['vellory://toggle', 'vellory://close'], @a{sv} {})"), "");
    EXPECT_EQ(call(app, "ActivateAction", "('settings', @av [], {'activation-token': <5>})"), "");
    EXPECT_EQ(call("com.quorvel.vellory.Links", "Open", "('vellory://search?q=a',)"), "");
    EXPECT_THAT(requests,
                ElementsAre(LinkRequest{"vellory://open", "old_TIME7"},
                            LinkRequest{"vellory://open", "new"}, LinkRequest{"vellory://toggle"},
                            LinkRequest{"vellory://close"}, LinkRequest{"vellory://settings"},
                            LinkRequest{"vellory://search?q=a"}));
}

TEST_F(ApplicationBusTest, WhatCannotBeObeyedIsAnError) {
    const std::string app = "org.freedesktop.Application";
    for (const char* action : {"quit", "", "../settings", "Settings"}) {
        EXPECT_THAT(
            call(app, "ActivateAction", "('" + std::string(action) + "', @av [], @a{sv} {})"),
            HasSubstr("no link or action"));
    }
    EXPECT_THAT(call(app, "Open", "(@as [], @a{sv} {})"), HasSubstr("no link or action"));
    const std::string tooLong(70'000, 'x');
    for (const std::string& link : {std::string("vellory://open\\nvellory://close"), tooLong}) {
        EXPECT_THAT(call("com.quorvel.vellory.Links", "Open", "('" + link + "',)"),
                    HasSubstr("no link or action"));
    }
    EXPECT_THAT(call(app, "Open", "('vellory://open',)"), HasSubstr("InvalidArgs"));
    EXPECT_THAT(requests, IsEmpty());
    obeys = false;
    EXPECT_THAT(call(app, "Activate", "(@a{sv} {},)"), HasSubstr("Too many links"));
}

TEST_F(ApplicationBusTest, EndsWithCallsUnansweredAndWithoutABus) {
    std::vector<LinkAnswer> unanswered;
    std::atomic<bool> asked = false;
    bus.reset();
    bus.emplace(session.environment(), loop, [&](LinkRequest request, LinkAnswer answer) {
        requests.push_back(std::move(request));
        unanswered.push_back(std::move(answer));
    });
    std::jthread asking([&] {
        // Until it has its name; then it goes before it answers.
        while (!ApplicationBus::open(session.environment(), {"vellory://open"}) && !asked.load()) {
        }
    });
    EXPECT_TRUE(loop.runUntil([&] { return !unanswered.empty(); }));
    asked = true;
    bus.reset();
    for (const LinkAnswer& answer : unanswered) {
        answer(true);
    }
    unanswered.clear();
    SessionEnvironment none;
    EXPECT_FALSE(ApplicationBus::open(none, {"vellory://open"}));
    const ApplicationBus silent(none, loop, [](const LinkRequest&, const LinkAnswer&) {});
}

} // namespace
} // namespace vellory::test
