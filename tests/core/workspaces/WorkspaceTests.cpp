// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/Workspace.h"

#include <gmock/gmock.h>
#include <limits>

#include "Support/AtomicFile.h"
#include "support/Lists.h"
#include "support/Records.h"
#include "support/TemporaryFolder.h"

namespace vellory::workspaces_tests {
namespace {

using test::changed;
using testing::ElementsAre;
using testing::IsEmpty;
using Item = Workspace::Item;
using Trigger = Workspace::Trigger;

const std::string writingJson =
    R"([{"focusGrid":true,"id":"0C8F1C9B-7C5B-4B8C-9B60-6D0C6F6C1A01","items":[)"
    R"({"app":{"_0":"org.example.editor"}},{"file":{"_0":"/home/me/Notes"}},)"
    R"({"url":{"_0":"https://example.org/a?b=c"}}],"name":"Writing","others":"hide",)"
    R"("symbol":"pencil.line","triggers":[)"
    R"({"schedule":{"hour":9,"minute":5,"weekdays":[2,6]}},{"display":{"_0":"office"}},)"
    R"({"focus":{"_0":"Work"}}],"windows":[{"bundleID":"org.example.editor",)"
    R"("frame":{"height":855.5,"width":705.0,"x":10.0,"y":-35.0},"index":1,)"
    R"("screenName":"Office Monitor 27"},{"bundleID":"org.example.editor",)"
    R"("frame":{"height":100.0,"width":200.0,"x":0.0,"y":0.0},"index":0}]}])";

Workspace writing() {
    Workspace out;
    out.id = *Uuid::parse("0C8F1C9B-7C5B-4B8C-9B60-6D0C6F6C1A01");
    out.name = "Writing";
    out.symbol = "pencil.line";
    out.items = {Item::app("org.example.editor"), Item::file("/home/me/Notes"),
                 Item::url("https://example.org/a?b=c")};
    out.windows = {{"org.example.editor", 1, {10, -35, 705, 855.5}, "Office Monitor 27"},
                   {"org.example.editor", 0, {0, 0, 200, 100}, std::nullopt}};
    out.others = Workspace::Others::hide;
    out.triggers = {Trigger::schedule({6, 2}, 9, 5), Trigger::display("office"),
                    Trigger::focus("Work")};
    out.focusGrid = true;
    return out;
}

TEST(Workspace, StoredFormIsAnArrayWithSortedKeysAndNamedCases) {
    EXPECT_EQ(json::encode(std::vector{writing()}, json::Style::compact), writingJson);
    EXPECT_EQ(json::decode<std::vector<Workspace>>(writingJson), std::vector{writing()});
}

TEST(Workspace, OneBadElementMakesTheWholeFileUnreadable) {
    test::expectStrictReading<std::vector<Workspace>>(writingJson, {"screenName"});
    for (const auto& [what, with] : {std::pair("0C8F1C9B-7C5B", "0C8F1C9B-7C5"),
                                     {R"("hide")", R"("Hide")"},
                                     {R"("app":{)", R"("file":{"_0":"/"},"app":{)"},
                                     {R"("x":10.0)", R"("x":1e999)"}}) {
        EXPECT_FALSE(json::decode<std::vector<Workspace>>(changed(writingJson, what, with)))
            << with;
    }
    // Keys of later versions and odd numbers are read.
    for (const auto& [what, with] : {std::pair(R"("app":{)", R"("v":2,"app":{)"),
                                     {R"("name":)", R"("colour":[1],"name":)"},
                                     {R"("hour":9)", R"("hour":99)"}}) {
        EXPECT_TRUE(json::decode<std::vector<Workspace>>(changed(writingJson, what, with))) << with;
    }
}

TEST(Workspace, SavedListsLoadAgain) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "new" / "vellory" / "workspaces.json";
    EXPECT_THAT(Workspace::load(file), IsEmpty());
    ASSERT_TRUE(Workspace::save({writing(), Workspace{}}, file));
    EXPECT_THAT(Workspace::load(file), ElementsAre(writing(), Workspace{}));
    EXPECT_FALSE(exists(file.parent_path() / "workspaces.json.unreadable"));
}

TEST(Workspace, UnreadableFileLoadsAsNoneAndIsKeptWhenOverwritten) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "workspaces.json";
    const auto kept = folder.path() / "workspaces.json.unreadable";
    const std::string truncated = writingJson.substr(0, writingJson.size() / 2);
    for (const std::string& text : {truncated, std::string("\0\0", 2), std::string(200'000, '['),
                                    std::string(Workspace::fileLimit, ' ') + "[]"}) {
        folder.write("workspaces.json", text);
        std::filesystem::remove(kept);
        EXPECT_THAT(Workspace::load(file), IsEmpty());
        ASSERT_TRUE(Workspace::save({writing()}, file));
        EXPECT_EQ(AtomicFile::read(kept), text);
        EXPECT_THAT(Workspace::load(file), ElementsAre(writing()));
    }
    folder.write("workspaces.json", "another accident");
    ASSERT_TRUE(Workspace::save({writing()}, file));
    EXPECT_NE(AtomicFile::read(kept), "another accident") << "the first stays";
    EXPECT_EQ(test::contentOf(folder.path() / "workspaces.json.2.unreadable"), "another accident");
}

TEST(Workspace, ListThatCouldNotBeReadBackIsRefused) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "workspaces.json";
    ASSERT_TRUE(Workspace::save({writing()}, file));
    Workspace huge = writing();
    huge.name.assign(Workspace::fileLimit, 'x');
    EXPECT_EQ(Workspace::save({huge}, file).error(), std::errc::file_too_large);
    EXPECT_THAT(Workspace::load(file), ElementsAre(writing()));
    EXPECT_FALSE(Workspace::save({}, file / "below a file" / "workspaces.json"));
}

TEST(Workspace, FrameThatJsonCannotSpellCostsOnlyItsSlot) {
    Workspace workspace = writing();
    workspace.windows[0].frame.x = std::numeric_limits<double>::quiet_NaN();
    const auto read = json::decode<Workspace>(json::encode(workspace));
    ASSERT_TRUE(read);
    EXPECT_THAT(read->windows, ElementsAre(writing().windows[1]));
}

TEST(Workspace, SetsAsideAllButItsOwnAppsTheFileManagerItselfAndProtectedOnes) {
    const std::vector<BundleID> running{
        "mail",  "com.apple.finder", "editor", "com.quorvel.vellory",
        "music", "COM.APPLE.FINDER", "mail"};
    Workspace workspace;
    workspace.items = {Item::app("editor"), Item::file("mail")};
    for (const auto others : {Workspace::Others::hide, Workspace::Others::quit}) {
        workspace.others = others;
        EXPECT_THAT(workspace.appsToSetAside(running, {"music"}),
                    ElementsAre("mail", "COM.APPLE.FINDER", "mail"));
    }
    workspace.others = Workspace::Others::keep;
    EXPECT_THAT(workspace.appsToSetAside(running, {}), IsEmpty());
}

TEST(Workspace, TriggersAndRulesHaveTitles) {
    const std::vector<std::pair<Trigger, std::string>> cases{
        {Trigger::schedule({6, 2}, 9, 0), "Mon, Fri at 09:00"},
        {Trigger::schedule({1, 7}, 9, 5), "Sun, Sat at 09:05"},
        {Trigger::schedule({6, 5, 4, 3, 2}, 18, 30), "Weekdays at 18:30"},
        {Trigger::schedule({1, 2, 3, 4, 5, 6, 7}, 0, 0), "Every day at 00:00"},
        {Trigger::schedule({}, 23, 59), " at 23:59"},
        {Trigger::schedule({0, 8, std::numeric_limits<int>::min()}, 123, -1),
         "Thu, Sat, Sun at 123:-1"},
        {Trigger::display("Office"), "When “Office” is connected"},
        {Trigger::focus("Work"), "When the Work Focus turns on"},
    };
    for (const auto& [trigger, title] : cases) {
        EXPECT_EQ(trigger.title(), title);
    }
    std::vector<std::string_view> titles;
    for (const auto others : Workspace::allOthers) {
        titles.push_back(title(others));
    }
    EXPECT_THAT(titles, ElementsAre("Leave other apps open", "Hide other apps", "Quit other apps"));
}

} // namespace
} // namespace vellory::workspaces_tests
