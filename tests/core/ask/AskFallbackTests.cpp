// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskFallback.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Ask/AskQuery.h"
#include "Ask/AskTemplates.h"
#include "support/Lists.h"

namespace vellory::ask_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

AskApp app(std::string name, std::set<std::string> keywords, int uses = 0) {
    return {"id." + name, name, std::move(keywords), uses};
}

std::vector<std::string> ranked(const std::vector<AskApp>& apps, std::string_view need,
                                const std::set<BundleID>& except = {}) {
    const AskApps ready(apps, Text::Collator("en"));
    return test::each(ready.rank(need, except), &AskApp::name);
}

std::optional<AskPlan> plan(std::string_view request, const std::vector<AskApp>& apps,
                            const std::vector<Workspace>& workspaces = {},
                            const std::vector<std::string>& layouts = {}) {
    return AskFallback::plan(request, AskApps(apps, Text::Collator("en")), workspaces, layouts);
}

Workspace workspaceNamed(std::string name, std::uint8_t number) {
    Workspace workspace;
    workspace.id = Uuid({number});
    workspace.name = std::move(name);
    workspace.symbol = "star";
    workspace.items = {Workspace::Item::app("id.Own"), Workspace::Item::url("https://example.com")};
    return workspace;
}

TEST(AskQuery, BeginsWithAQuestionMark) {
    const std::pair<std::string_view, std::optional<std::string>> cases[] = {
        {"?", ""},
        {"? \t ", ""},
        {"  ?  call mum ", "call mum"},
        {"？call", "call"},
        {"??", "?"},
        {"call?", std::nullopt},
        {"", std::nullopt},
        {"\xEF\xBC", std::nullopt},
    };
    for (const auto& [text, request] : cases) {
        EXPECT_EQ(AskQuery::parse(text), request) << text;
    }
}

TEST(AskApps, FitBestByWordsThenNameThenUseThenName) {
    const std::vector<AskApp> apps{
        app("Zeta", {"photos"}),           app("item 10", {"photos"}),
        app("Item 9", {"photo"}),          app("Often", {"photos"}, 50),
        app("Photography", {"photos"}, 1), // no word of the name has the stem "photo"
        app("My Photos", {"photos"}, 1),   // named after it: 1 + 2
        app("Calendar", {"calendar"}),     app("Uninstall Photos", {"photos"}, 99),
        app("Photos", {"recipes"}, 99), // named so, but does not know it
    };
    EXPECT_THAT(ranked(apps, "photos"),
                ElementsAre("My Photos", "Often", "Photography", "Item 9", "item 10", "Zeta"));
    EXPECT_THAT(ranked(apps, "photos", {"id.My Photos", "id.Often"}),
                ElementsAre("Photography", "Item 9", "item 10", "Zeta"));
    EXPECT_THAT(ranked({app("B", {"tv"}), app("B", {"tv"}), app("A", {"tv"})}, "tv").size(), 3U);
}

TEST(AskApps, APurposeOfWordsThatSayNothingFitsNoApp) {
    const std::vector<AskApp> apps{app("Preview", {"image", "images", "tool", "file", "open"})};
    for (const std::string_view need : {"", "image", "Image files", "tools & apps", "a", "open"}) {
        EXPECT_THAT(ranked(apps, need), IsEmpty()) << need;
    }
}

TEST(AskApps, LongPurposesNeedHalfTheirWords) {
    const std::vector<AskApp> apps{app("Cutter", {"video", "edit"}), app("Player", {"video"})};
    EXPECT_THAT(ranked(apps, "edit videos"), ElementsAre("Cutter"));
    EXPECT_THAT(ranked(apps, "edit my video with music"), ElementsAre("Cutter"));
    EXPECT_THAT(ranked(apps, "video photo"), IsEmpty());
    // Every repetition counts: 3 of 4 words.
    EXPECT_THAT(ranked(apps, "video video video radio"), ElementsAre("Cutter", "Player"));
}

TEST(AskFallback, WordsAreStems) {
    EXPECT_THAT(AskFallback::words("Set me up: Editing photos, a bus!"),
                ElementsAre("set", "me", "up", "edit", "photo", "bus"));
    EXPECT_THAT(AskFallback::words(" -- a ? "), IsEmpty());
}

TEST(AskFallback, EveryTemplateIsChosenByItsOwnTriggers) {
    for (const auto& task : AskTemplates::all) {
        for (const std::string_view trigger : task.triggers) {
            const auto made = plan(trigger, {app("Any", {std::string(task.needs[0])})});
            ASSERT_TRUE(made) << trigger;
            EXPECT_EQ(made->name, task.name) << trigger;
        }
    }
}

TEST(AskFallback, ATaskTakesTheBestAppForEachNeed) {
    const std::vector<AskApp> apps{
        app("Meet", {"meeting", "call", "calendar", "notes"}, 9),
        app("Agenda", {"calendar", "meeting"}),
        app("Other Agenda", {"calendar"}),
    };
    const auto made = plan("set me up for a client call", apps);
    ASSERT_TRUE(made);
    EXPECT_EQ(*made, (AskPlan{.name = "Call",
                              .symbol = "video",
                              .apps = {"id.Meet", "id.Agenda"}, // nothing is left for notes
                              .arrangement = Arrangement::split,
                              .hideOthers = true}));
}

TEST(AskFallback, TheFirstTaskOfTheTableWins) {
    EXPECT_EQ(plan("write about coding in a meeting", {app("Meet", {"meeting"})})->name, "Call");
    EXPECT_EQ(plan("calling", {app("Meet", {"meeting"})})->name, "Call");
    EXPECT_EQ(plan("recall", {app("Recall", {"memory"})})->name, "Recall") << "whole words only";
}

TEST(AskFallback, AppsThatTheRequestNamesComeAlong) {
    const std::vector<AskApp> apps{
        app("Meeting Room", {"chess"}),  app("Spotify", {"music"}), app("Uninstall Spotify", {}),
        app("Git Garden", {"versions"}), app("Launch Files", {}),   app("Meet", {"meeting"}),
        app("Zooming", {"maps"}),        app("Word", {"ink"}),
    };
    // "meet" selected the task and "git" is too short to name an app; "launch" says nothing.
    EXPECT_THAT(plan("meet with spotify git word and launch files", apps)->apps,
                ElementsAre("id.Meet", "id.Spotify", "id.Word"));
    EXPECT_THAT(plan("call on zoom with the garden", apps)->apps,
                ElementsAre("id.Meet", "id.Git Garden"));
}

TEST(AskFallback, ATaskWithLinksNeedsNoApps) {
    const auto made = plan("coding on example.com", {});
    ASSERT_TRUE(made);
    EXPECT_EQ(made->name, "Coding");
    EXPECT_EQ(made->arrangement, Arrangement::columns);
    EXPECT_FALSE(made->hideOthers);
    EXPECT_THAT(made->urls, ElementsAre("https://example.com"));
    EXPECT_EQ(plan("coding", {}), std::nullopt);
}

TEST(AskFallback, AFreeRequestTakesTheBestFourAndAtMostFiveInAll) {
    std::vector<AskApp> apps;
    for (int i = 0; i < 6; ++i) {
        apps.push_back(app("Tracker " + std::to_string(i), {"budgets"}, i));
    }
    auto made = plan("budgets", apps);
    ASSERT_TRUE(made);
    EXPECT_THAT(made->apps,
                ElementsAre("id.Tracker 5", "id.Tracker 4", "id.Tracker 3", "id.Tracker 2"));
    EXPECT_EQ(made->arrangement, Arrangement::split);
    EXPECT_FALSE(made->hideOthers);
    EXPECT_EQ(made->symbol, "sparkles");

    apps.push_back(app("Budget Maker", {}));
    apps.push_back(app("Budget Printer", {}));
    EXPECT_THAT(plan("budgets", apps)->apps,
                ElementsAre("id.Tracker 5", "id.Tracker 4", "id.Tracker 3", "id.Tracker 2",
                            "id.Budget Maker"));

    made = plan("  pay thé budgets of the whole last year ",
                {app("Payer", {"budgets", "pay", "last", "year"})});
    ASSERT_TRUE(made);
    EXPECT_EQ(made->name, "Pay Thé Budgets Of The Whole Las");
    EXPECT_EQ(made->arrangement, Arrangement::focus);
}

TEST(AskFallback, ASavedWorkspaceIsReusedWhenTheRequestHasAllWordsOfItsName) {
    const std::vector<Workspace> saved{workspaceNamed("…", 1), workspaceNamed("Deep Work Notes", 2),
                                       workspaceNamed("Deep Work", 3), workspaceNamed("Work", 4)};
    const auto made = plan("deep work now on example.com", {app("Any", {"work"})}, saved);
    ASSERT_TRUE(made);
    EXPECT_EQ(*made, (AskPlan{.name = "Deep Work",
                              .symbol = "star",
                              .apps = {"id.Own"},
                              .urls = {"https://example.com"},
                              .arrangement = Arrangement::keep,
                              .hideOthers = false,
                              .basedOn = Uuid({3})}));
    EXPECT_EQ(plan("working", {}, saved)->basedOn, Uuid({4}));
}

TEST(AskFallback, TheFirstGridLayoutThatIsNamedIsShown) {
    const std::vector<std::string> layouts{"?", "Travel Photos", "Travel", "Call"};
    EXPECT_EQ(plan("call about travel", {app("Meet", {"meeting"})}, {}, layouts)->gridLayout,
              "Travel");
    EXPECT_EQ(plan("write", {app("Pen", {"writing"})}, {}, layouts)->gridLayout, std::nullopt);
    EXPECT_EQ(plan("work", {}, {workspaceNamed("Work", 1)}, {"work"})->gridLayout, "work");
    EXPECT_EQ(plan("travel", {}, {}, layouts), std::nullopt) << "a layout alone is no plan";
}

TEST(AskFallback, ARequestWithoutWordsIsNoPlan) {
    for (const std::string_view request : {"", "   ", "?!", "a", "\xFF\xFE"}) {
        EXPECT_EQ(plan(request, {app("A", {"a"})}, {workspaceNamed("", 1)}, {""}), std::nullopt)
            << request;
    }
}

} // namespace
} // namespace vellory::ask_tests
