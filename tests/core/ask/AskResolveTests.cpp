// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskResolve.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Ask/AskTools.h"
#include "support/Records.h"

namespace vellory::AskResolve {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<AskApp> installed{
    {"com.example.Code", "Visual Studio Code", {"code"}, 1},
    {"com.example.browser", "Safari", {"browser", "web"}, 2},
    {"com.example.preview", "Safari Technology Preview", {"browser"}, 3},
    {"com.example.notes", "Notes", {"notes"}, 4},
    {"com.example.chat", "Chat", {"call", "meeting"}, 5},
    {"com.example.agenda", "Agenda", {"calendar"}, 6},
    {"com.example.mail", "Mail", {"email"}, 7},
    {"com.example.music", "Música", {"music"}, 8},
    {"com.example.term", "Terminal", {"terminal"}, 9},
};

AskApps ready(std::vector<AskApp> apps) {
    return AskApps(std::move(apps), Text::Collator("en"));
}

Workspace workspaceOf(std::string name, std::vector<BundleID> apps) {
    Workspace workspace;
    workspace.id = Uuid({7});
    workspace.name = std::move(name);
    for (BundleID& app : apps) {
        workspace.items.push_back(Workspace::Item::app(std::move(app)));
    }
    workspace.items.push_back(Workspace::Item::file("/tmp/plan.txt"));
    workspace.windows = {{"com.example.notes", 0, {1, 2, 3, 4}, "Display"}};
    workspace.triggers = {Workspace::Trigger::focus("Work")};
    return workspace;
}

std::expected<AskPlan, ProposalError> completed(const ProposedWorkspace& proposal,
                                                std::string_view request = "the request",
                                                const std::vector<Workspace>& workspaces = {},
                                                const std::vector<std::string>& layouts = {}) {
    return complete(proposal, request, ready(installed), workspaces, layouts,
                    [](std::string_view symbol) { return symbol == "video"; });
}

TEST(Urls, AreWebAddressesAndBareDomains) {
    const std::pair<std::string_view, std::vector<std::string>> cases[] = {
        {"coding on example.com", {"https://example.com"}},
        {"(see \"example.com\"), or example.org;", {"https://example.com", "https://example.org"}},
        {"open https://example.com/a?b=c#d.", {"https://example.com/a?b=c#d"}},
        {"http://localhost:8080 and http://", {"http://localhost:8080"}},
        {"HTTPS://Example.com", {"HTTPS://Example.com"}},
        {"b.example.com\na.example.com\tb.example.com",
         {"https://b.example.com", "https://a.example.com", "https://b.example.com"}},
        {"käse.de", {"https://käse.de"}},
        {"3.14 e.g. v1.2 1a.com x.y a.c0m .com. com. ... - .", {}},
        {"src/main.rs ftp://example.com someone@example.com example.com:80", {}},
        {"", {}},
        {"example", {}},
    };
    for (const auto& [request, expected] : cases) {
        EXPECT_EQ(urls(request), expected) << request;
    }
}

TEST(BundleIDs, AreWhatLooseNamesMean) {
    const std::pair<const char*, const char*> cases[] = {
        {"com.example.code", "com.example.Code"}, // an identifier in any case
        {"SAFARI", "com.example.browser"},        // a whole name before a beginning
        {"\"Safari\".", "com.example.browser"},
        {" 'notes', \n", "com.example.notes"},
        {"visual st", "com.example.Code"},      // the beginning of a name
        {"safari tech", "com.example.browser"}, // the first app that either way would do
        {"Notes app", "com.example.notes"},     // a name with more after it
        {"Studio", "com.example.Code"},         // a later word
        {"Termnial", "com.example.term"},       // one typo: 300
        {"agnd", ""},                           // scattered letters: 380
        {"Photos", ""},
        {"\"\".,'", ""},
        {"   ", ""},
    };
    for (const auto& [text, id] : cases) {
        const auto ids = bundleIDs({text}, installed);
        EXPECT_EQ(ids.empty() ? "" : ids.front(), id) << text;
    }
    EXPECT_THAT(bundleIDs({"Notes", "com.example.NOTES", "Nothing", "Mail", "'notes'"}, installed),
                ElementsAre("com.example.notes", "com.example.mail"));
    EXPECT_THAT(bundleIDs({"Notes"}, {}), IsEmpty());
}

TEST(BundleIDs, AScatteredMatchCountsAtExactlyTheScoreOfATypo) {
    // Ten characters skipped score 300, nine score 310.
    const std::vector<AskApp> apps{{"ten", "a1234567890b", {}, 0}};
    EXPECT_THAT(bundleIDs({"ab"}, apps), ElementsAre("ten"));
    EXPECT_THAT(bundleIDs({"ab"}, {{"nine", "a123456789b", {}, 0}}), IsEmpty());
}

TEST(Complete, FillsAModelsProposalUp) {
    ProposedWorkspace proposal{
        .name = "  Client call ",
        .symbol = "video",
        .needs = {"web browsing", "calls", "calendar", "flying", "email", "music", "terminal"},
        .apps = {"safari", "Imaginary"},
        .links = {"https://example.com/x", "see example.org", "nothing"},
        .arrangement = "columns",
        .hideOtherApps = true,
        .gridLayout = "work GRID",
        .reason = "Because.",
    };
    const auto plan = completed(proposal, "request", {}, {"Home", "Work Grid"});
    ASSERT_TRUE(plan);
    EXPECT_EQ(*plan,
              (AskPlan{.name = "Client call",
                       .symbol = "video",
                       .apps = {"com.example.browser", "com.example.chat", "com.example.agenda",
                                "com.example.mail", "com.example.music"},
                       .urls = {"https://example.com/x", "https://example.org"},
                       .arrangement = Arrangement::columns,
                       .hideOthers = true,
                       .gridLayout = "Work Grid",
                       .note = "Because.",
                       .byModel = true}));
    EXPECT_EQ(diagnostic(proposal), "needs: web browsing, calls, calendar, flying, email, music, "
                                    "terminal; apps: safari, Imaginary");
}

TEST(Complete, PutsPlainThingsWhereTheModelMadeThemUp) {
    for (const std::string& name :
         {std::string(" "), std::string("FindApps"), std::string("listLayouts\n")}) {
        const auto plan = completed({.name = name,
                                     .symbol = "no.such.symbol",
                                     .apps = {"Notes"},
                                     .arrangement = "stacked",
                                     .gridLayout = "none"},
                                    " set up everything that I could possibly need ");
        ASSERT_TRUE(plan);
        EXPECT_EQ(plan->name, "set up everything that I could p");
        EXPECT_EQ(plan->symbol, "sparkles");
        EXPECT_EQ(plan->arrangement, Arrangement::keep);
        EXPECT_EQ(plan->gridLayout, std::nullopt);
    }
}

TEST(Complete, ExtendsTheSavedWorkspaceThatItNames) {
    const auto saved = workspaceOf("Deep Work", {"gone.app", "com.example.notes"});
    const auto plan = completed({.name = "x",
                                 .needs = {"notes", "calendar"},
                                 .apps = {"Mail", "Notes"},
                                 .existingWorkspace = "deep work"},
                                "r", {workspaceOf("Other", {}), saved});
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->basedOn, saved.id);
    EXPECT_THAT(plan->apps, ElementsAre("gone.app", "com.example.notes", "com.example.mail",
                                        "com.example.agenda"));

    Workspace expected = saved;
    expected.items.push_back(Workspace::Item::app("com.example.mail"));
    expected.items.push_back(Workspace::Item::app("com.example.agenda"));
    EXPECT_EQ(plan->workspace(Workspace::Rect{0, 0, 1000, 1000}, saved, Uuid::random), expected);
}

TEST(Complete, FailsWithoutInstalledApps) {
    const auto plan =
        completed({.needs = {"flying"}, .apps = {"Imaginary"}, .links = {"https://example.com"}});
    ASSERT_FALSE(plan);
    EXPECT_EQ(issueText(plan.error()), "the model proposed no installed apps");
}

TEST(AskPlanWorkspace, HasItemsThenFramesForTheFirstApps) {
    const AskPlan plan{.name = "Call",
                       .symbol = "video",
                       .apps = {"a", "b", "c"},
                       .urls = {"https://example.com"},
                       .files = {"/tmp/x"},
                       .arrangement = Arrangement::split,
                       .hideOthers = true};
    const auto counted = [] { return Uuid({42}); };
    Workspace expected;
    expected.id = Uuid({42});
    expected.name = "Call";
    expected.symbol = "video";
    expected.items = {Workspace::Item::app("a"), Workspace::Item::app("b"),
                      Workspace::Item::app("c"), Workspace::Item::url("https://example.com"),
                      Workspace::Item::file("/tmp/x")};
    expected.others = Workspace::Others::hide;
    EXPECT_EQ(plan.workspace({}, {}, counted), expected) << "no screen, no frames";

    expected.windows = {{"a", 0, {10, 35, 705, 855}, {}}, {"b", 0, {725, 35, 705, 855}, {}}};
    EXPECT_EQ(plan.workspace(Workspace::Rect{0, 25, 1440, 875}, {}, counted), expected);
}

TEST(LocalizedAskName, TranslatesOnlyTheKeywordPlannersTasks) {
    const auto shout = [](std::string_view key, std::string_view english) {
        return std::string(key) + "/" + std::string(english);
    };
    AskPlan plan;
    plan.name = "Call";
    EXPECT_EQ(localizedAskName(plan, shout), "AskTemplate.Call/Call");
    plan.byModel = true;
    EXPECT_EQ(localizedAskName(plan, shout), "Call");
    plan.byModel = false;
    plan.basedOn = Uuid({1});
    EXPECT_EQ(localizedAskName(plan, shout), "Call");
    EXPECT_EQ(localizedAskName(AskPlan{.name = "call"}, shout), "call");
}

TEST(AskPlanJson, LeavesOutWhatIsAbsentAndReadsBack) {
    AskPlan plan{.name = "Call",
                 .symbol = "video",
                 .apps = {"a"},
                 .arrangement = Arrangement::grid,
                 .hideOthers = true,
                 .note = "n",
                 .byModel = true};
    EXPECT_EQ(json::encode(plan, json::Style::compact),
              R"({"apps":["a"],"arrangement":"grid","byModel":true,"files":[],"hideOthers":true,)"
              R"("name":"Call","note":"n","symbol":"video","urls":[]})");
    EXPECT_EQ(json::decode<AskPlan>(json::encode(plan)), plan);
    plan.basedOn = Uuid({1});
    plan.gridLayout = "Work";
    EXPECT_EQ(json::decode<AskPlan>(json::encode(plan)), plan);
    test::expectStrictReading<AskPlan>(json::encode(plan), {"basedOn", "gridLayout"});
}

TEST(ProposedWorkspace, IsReadStrictlyAndAgreesWithItsSchema) {
    json::Value answer = json::Value::object();
    const json::Value schema = ProposedWorkspace::schema();
    for (const auto& [name, property] : schema["properties"].items()) {
        answer[name] = property["type"] == "array"     ? json::Value({"x"})
                       : property["type"] == "boolean" ? json::Value(true)
                       : property.contains("enum")     ? property["enum"][2]
                                                       : json::Value("text");
    }
    const auto proposal = ProposedWorkspace::parse(answer.dump());
    ASSERT_TRUE(proposal);
    EXPECT_EQ(*proposal,
              (ProposedWorkspace{
                  "text", "text", {"x"}, {"x"}, {"x"}, "split", true, "text", "text", "text"}));
    EXPECT_EQ(schema["required"].size(), answer.size());
    const auto isRead = [](const std::string& text) {
        return ProposedWorkspace::parse(text).has_value();
    };
    test::StrictReading(isRead, {}, {}).expectOf(answer.dump());
    answer["name"] = std::string(20'000, 'x');
    EXPECT_FALSE(ProposedWorkspace::parse(answer.dump()));
}

TEST(AskTools, FindAppsByPurposeThenTheThreeBestNames) {
    const AskApps apps = ready(installed);
    EXPECT_EQ(AskTools::findApps("browser", apps), "Safari Technology Preview\nSafari");
    EXPECT_EQ(AskTools::findApps("safari", apps), "Safari\nSafari Technology Preview");
    EXPECT_EQ(AskTools::findApps("notes", apps), "Notes");
    EXPECT_EQ(AskTools::findApps("flying", apps), "No installed app fits “flying”.");

    std::vector<AskApp> many;
    for (const char* name : {"music 1", "music 2", "music 3", "music 4"}) {
        many.push_back({name, name, {}, 0});
    }
    EXPECT_EQ(AskTools::findApps("music", ready(many)), "music 1\nmusic 2\nmusic 3");
    for (int i = 0; i < 9; ++i) {
        many.push_back({"p" + std::to_string(i), "Player " + std::to_string(i), {"music"}, i});
    }
    EXPECT_EQ(AskTools::findApps("music", ready(many)),
              "Player 8\nPlayer 7\nPlayer 6\nPlayer 5\nPlayer 4\nPlayer 3\nPlayer 2\nPlayer 1");
}

TEST(AskTools, ListWhatTheUserSaved) {
    const auto nameOf = [](const BundleID& id) { return id.substr(id.rfind('.') + 1); };
    EXPECT_EQ(AskTools::listWorkspaces({}, nameOf), "The user has no saved workspaces.");
    EXPECT_EQ(AskTools::listWorkspaces(
                  {workspaceOf("Work", {"x.mail", "x.notes"}), workspaceOf("Empty", {})}, nameOf),
              "Work: mail, notes\nEmpty: ");
    EXPECT_EQ(AskTools::listLayouts({}), "Saved grid layouts: none. Window arrangements: keep, "
                                         "focus, split, columns, grid.");
    EXPECT_EQ(AskTools::listLayouts({"A", "B"}), "Saved grid layouts: A, B. Window arrangements: "
                                                 "keep, focus, split, columns, grid.");
}

} // namespace
} // namespace vellory::AskResolve
