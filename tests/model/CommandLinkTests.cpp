// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <filesystem>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "World.h"
#include "model/CommandLinks.h"
#include "model/LauncherState.h"
#include "support/HostileTexts.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LinkDesk : World {
    LinkDesk() {
        Workspace writing;
        writing.id = *Uuid::parse("AAAAAAAA-0000-4000-8000-000000000001");
        writing.name = "Writing";
        writing.triggers = {Workspace::Trigger::focus("Deep/Work")};
        Workspace slashed = writing;
        slashed.id = *Uuid::parse("AAAAAAAA-0000-4000-8000-000000000002");
        slashed.name = "a/b ö";
        slashed.triggers.clear();
        std::ignore = Workspace::save({writing, slashed}, paths().workspaces());
        startWith({"a", "b"}, board({app("a"), app("b")}));
        state.emplace(*model);
        links.emplace(*model, *state);
        const auto say = [this](const char* what) {
            return [this, what] { did.emplace_back(what); };
        };
        QObject::connect(&*links, &CommandLinks::showRequested, say("show"));
        QObject::connect(&*links, &CommandLinks::hideRequested, say("hide"));
        QObject::connect(&*links, &CommandLinks::settingsRequested, say("settings"));
        QObject::connect(&*links, &CommandLinks::timeMachineRequested, say("time machine"));
        QObject::connect(&*links, &CommandLinks::searchRequested,
                         [this](const std::string& text) { did.push_back("search " + text); });
        QObject::connect(&*links, &CommandLinks::askRequested,
                         [this](const std::string& text) { did.push_back("ask " + text); });
    }
    /// What a link does: requests, then notices.
    std::vector<std::string> does(const std::string& link) {
        did.clear();
        notices.clear();
        links->handle(link);
        for (const Notice& notice : notices) {
            did.push_back(notice.text);
        }
        return did;
    }

    std::optional<LauncherState> state;
    std::optional<CommandLinks> links;
    std::vector<std::string> did;
};

struct CommandLinksTest : testing::Test {
    LinkDesk desk;
};

TEST_F(CommandLinksTest, EachHostDoesItsThing) {
    const std::map<std::string, std::vector<std::string>> table{
        {"vellory://open", {"show"}},
        {"vellory://show", {"show"}},
        {"vellory://Open", {"show"}},
        {"vellory://Settings", {"show"}},
        {"vellory://", {"show"}},
        {"vellory:", {"show"}},
        {"vellory://unknown/path?q=1#f", {"show"}},
        {"vellory://toggle", {"show"}},
        {"vellory://settings", {"hide", "settings"}},
        {"vellory://search?q=a%20b&q=c", {"search a b"}},
        {"vellory://search?Q=a", {"search "}},
        {"vellory://ask?q=plan%3F", {"ask plan?"}},
        {"vellory://time-machine", {"time machine"}},
        {"vellory://layout/No/Such", {"No saved layout “No/Such”"}},
        {"vellory://workspace/nobody/at%20home", {"No workspace named “at home”"}},
        {"vellory://workspace/writing", {"Writing workspace"}},
        {"vellory://workspace/aaaaaaaa-0000-4000-8000-000000000001", {"Writing workspace"}},
        {"vellory://workspace/a/b%20%C3%B6", {"a/b ö workspace"}},
        {"vellory://workspace/%zz", {}},
        {"Vellory://open", {}},
        {"other://open", {}},
        {"open", {}},
        {"", {}},
        {std::string("vellory://open\0x", 16), {}},
    };
    for (const auto& [link, expected] : table) {
        EXPECT_EQ(desk.does(link), expected) << link;
    }
    desk.state->setPresented(true);
    EXPECT_THAT(desk.does("vellory://toggle"), ElementsAre("hide"));
}

TEST_F(CommandLinksTest, AFocusSessionHasItsMinutes) {
    const std::map<std::string, int> table{{"", 25},
                                           {"?minutes=50", 50},
                                           {"?minutes=0", 1},
                                           {"?minutes=-7", 1},
                                           {"?minutes=5000", 600},
                                           {"?minutes=99999999999999999999", 600},
                                           {"?minutes=abc", 25},
                                           {"?minutes=5.5", 25},
                                           {"?minutes=", 25},
                                           {"?Minutes=5", 25},
                                           {"?minutes=x&minutes=5", 25}};
    for (const auto& [query, minutes] : table) {
        EXPECT_THAT(desk.does("vellory://focus-session/Writing" + query),
                    ElementsAre("Writing workspace",
                                "Writing focus: " + std::to_string(minutes) + " minutes"))
            << query;
    }
    EXPECT_THAT(desk.does("vellory://focus-session/Nobody?minutes=5"),
                ElementsAre("No workspace named “Nobody”"));
    EXPECT_THAT(desk.does("vellory://close"), ElementsAre("Writing closed"));
    EXPECT_THAT(desk.does("vellory://close"), IsEmpty());
}

TEST_F(CommandLinksTest, AFocusNameOpensItsWorkspacesOnce) {
    EXPECT_THAT(desk.does("vellory://focus/Deep/Work"), ElementsAre("Writing workspace"));
    EXPECT_THAT(desk.does("vellory://focus/Deep/Work"), IsEmpty());
    EXPECT_THAT(desk.does("vellory://focus/"), IsEmpty());
}

TEST_F(CommandLinksTest, ALayoutThatWasSavedComesBack) {
    desk.model->saveLayout("Work/Home");
    EXPECT_EQ(desk.notices.back(),
              (Notice{"Saved layout “Work/Home”", "square.and.arrow.down", 1.8}));
    const std::string before = desk.onDisk();
    desk.model->moveToEnd("app:a");
    ASSERT_NE(desk.onDisk(), before);
    EXPECT_THAT(desk.does("vellory://layout/Work/Home"),
                ElementsAre("Switched to layout Work/Home"));
    EXPECT_EQ(desk.onDisk(), before);
    EXPECT_EQ(desk.model->snapshots().front().reason, "Switched_to_layout_Work-Home");
}

// What links say reaches no shell, no program and no file: those whose host is known do their thing
// with what cannot be found, all others show the grid.
TEST_F(CommandLinksTest, HostileLinksDoNothingButAskForWhatIsNotThere) {
    const auto before = filesBelow(desk.folder.path());
    const auto isKnown = [](const std::string& host) {
        constexpr std::array hosts{"settings",      "workspace",    "focus",
                                   "focus-session", "search",       "layout",
                                   "ask",           "time-machine", "close"};
        return std::ranges::find(hosts, host) != hosts.end();
    };
    const std::vector<std::string> links = hostileLinks();
    ASSERT_GE(links.size(), 300U);
    for (const std::string& text : links) {
        const auto link = Link::parse(text);
        const auto did = desk.does(text);
        const std::string shown = text.substr(0, 100);
        if (!link || link->scheme() != "vellory") {
            EXPECT_THAT(did, IsEmpty()) << shown;
        } else if (!isKnown(link->host().value_or(""))) {
            EXPECT_THAT(did, ElementsAre("show")) << shown;
        } else if (link->host() == "search") {
            EXPECT_THAT(did, ElementsAre("search " + link->queryValue("q").value_or(""))) << shown;
        } else if (link->host() == "workspace" || link->host() == "focus-session") {
            EXPECT_THAT(did, ElementsAre(testing::StartsWith("No workspace named “"))) << shown;
        } else if (link->host() == "layout") {
            EXPECT_THAT(did, ElementsAre(testing::StartsWith("No saved layout “"))) << shown;
        }
    }
    EXPECT_EQ(filesBelow(desk.folder.path()), before);
    EXPECT_THAT(desk.runningApps.asked, IsEmpty());
    EXPECT_THAT(desk.desktop.asked, IsEmpty());
}

} // namespace
} // namespace vellory::test
