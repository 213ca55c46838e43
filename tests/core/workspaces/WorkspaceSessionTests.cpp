// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/WorkspaceSession.h"

#include <gmock/gmock.h>
#include <limits>

#include "support/Records.h"

namespace vellory::workspaces_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Action = WorkspaceSession::Action;
using Change = WorkspaceSession::Change;
using CloseApps = WorkspaceSession::CloseApps;
using Item = Workspace::Item;

const Date noon = Date::since2001(800'000'000);

Workspace writing(Workspace::Others others) {
    Workspace out;
    out.id = *Uuid::parse("0C8F1C9B-7C5B-4B8C-9B60-6D0C6F6C1A01");
    out.items = {Item::app("notes"), Item::file("/f"), Item::app("editor"), Item::app("music")};
    out.others = others;
    return out;
}

const std::vector<BundleID> running{"mail",  "com.apple.finder",   "editor", "chat",
                                    "guard", "com.quorvel.vellory"};

TEST(WorkspaceSession, OpeningRemembersWhatItChanges) {
    const auto begun = [](Workspace::Others others, std::optional<int> minutes) {
        return WorkspaceSession::begin(writing(others), running, {"chat"}, {"guard"}, noon,
                                       minutes);
    };
    WorkspaceSession expected{
        .workspace = writing({}).id, .started = noon, .launched = {"notes", "music"}};
    EXPECT_EQ(begun(Workspace::Others::keep, std::nullopt), expected);
    expected.hidden = {"mail"}; // "chat" was hidden before
    EXPECT_EQ(begun(Workspace::Others::hide, std::nullopt), expected);
    expected.hidden = {};
    expected.quit = {"mail", "chat"};
    expected.ends = noon + 1500;
    EXPECT_EQ(begun(Workspace::Others::quit, 25), expected);
}

TEST(WorkspaceSession, AsideActionsFollowTheRuleForEveryRunningInstance) {
    const std::vector<BundleID> twice{"mail", "editor", "mail"};
    EXPECT_THAT(WorkspaceSession::asideActions(writing(Workspace::Others::hide), twice, {}),
                ElementsAre(Action{"mail", Change::hide}, Action{"mail", Change::hide}));
    EXPECT_THAT(WorkspaceSession::asideActions(writing(Workspace::Others::quit), twice, {}),
                ElementsAre(Action{"mail", Change::quit}, Action{"mail", Change::quit}));
    EXPECT_THAT(WorkspaceSession::asideActions(writing(Workspace::Others::keep), twice, {}),
                IsEmpty());
}

TEST(WorkspaceSession, EveryAppGetsAtMostOneChangeAndKeptAppsNone) {
    const WorkspaceSession::ClosePlan plan{.quit = {"a", "b"},
                                           .hide = {"b", "c"},
                                           .unhide = {"a", "c", "d", "e"},
                                           .reopen = {"f", "e"}};
    EXPECT_THAT(plan.actions({"e", "d", "x", "c", "b", "a"}, {"e"}),
                ElementsAre(Action{"d", Change::unhide}, Action{"c", Change::hide},
                            Action{"b", Change::quit}, Action{"a", Change::quit}));
    EXPECT_THAT(plan.appsToReopen({"e"}), ElementsAre("f"));
}

TEST(WorkspaceSession, RemainingTimeIsNeverNegative) {
    WorkspaceSession session;
    EXPECT_EQ(session.remaining(noon), std::nullopt);
    session.ends = noon + 60;
    EXPECT_EQ(session.remaining(noon), 60);
    EXPECT_EQ(session.remaining(noon + 60), 0);
    EXPECT_EQ(session.remaining(noon + 61), 0);
    EXPECT_EQ(session.remaining(Date{std::numeric_limits<double>::quiet_NaN()}), 0);
    const auto longest =
        WorkspaceSession::begin({}, {}, {}, {}, noon, std::numeric_limits<int>::max());
    EXPECT_EQ(longest.remaining(noon), std::numeric_limits<int>::max() * 60.0);
}

TEST(WorkspaceSession, StoredFormLeavesOutAnOpenEnd) {
    WorkspaceSession session{
        .workspace = writing(Workspace::Others::keep).id, .started = noon, .launched = {"notes"}};
    EXPECT_EQ(json::encode(session, json::Style::compact),
              R"({"hidden":[],"launched":["notes"],"quit":[],"started":800000000.0,)"
              R"("workspace":"0C8F1C9B-7C5B-4B8C-9B60-6D0C6F6C1A01"})");
    EXPECT_EQ(json::decode<WorkspaceSession>(json::encode(session)), session);
    session.ends = noon + 0.5;
    EXPECT_EQ(json::decode<WorkspaceSession>(json::encode(session)), session);
    test::expectStrictReading<WorkspaceSession>(json::encode(session), {"ends"});
    for (const auto& [choice, name] : {std::pair(CloseApps::quit, "quit"),
                                       {CloseApps::hide, "hide"},
                                       {CloseApps::keep, "keep"}}) {
        EXPECT_EQ(rawValue(choice), name);
        EXPECT_EQ(closeAppsFromRawValue(name), choice);
    }
}

} // namespace
} // namespace vellory::workspaces_tests
