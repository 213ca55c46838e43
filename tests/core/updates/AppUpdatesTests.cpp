// SPDX-License-Identifier: Apache-2.0
#include "Updates/AppUpdates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Lists.h"

namespace vellory::AppUpdates {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string feed(std::string_view items) {
    return std::string("<?xml version=\"1.0\" encoding=\"utf-8\"?><rss version=\"2.0\" "
                       "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">"
                       "<channel><title>9.9</title>")
        .append(items)
        .append("</channel></rss>");
}

const InstalledApp editor{"com.example.editor", "Editor", "/Applications/Editor.app"};

TEST(AppcastLatest, IsTheNewestVersionOfAnyItem) {
    const std::pair<std::string_view, std::optional<std::string>> cases[] = {
        {"", std::nullopt},
        {"<item><enclosure sparkle:shortVersionString='1.9'/></item>"
         "<item><enclosure sparkle:shortVersionString='1.10'/></item>"
         "<item><enclosure sparkle:shortVersionString='1.2'/></item>",
         "1.10"},
        {"<item><sparkle:version>12</sparkle:version></item>"
         "<item><sparkle:version>104</sparkle:version></item>",
         "104"},
        // The short version goes before the build number wherever it stands.
        {"<item><sparkle:version>500</sparkle:version>"
         "<sparkle:shortVersionString>1.4</sparkle:shortVersionString></item>",
         "1.4"},
        {"<item><enclosure sparkle:shortVersionString='1.4'/>"
         "<sparkle:version>500</sparkle:version></item>",
         "1.4"},
        // Of an attribute and an element the later one counts, unless it is empty.
        {"<item><enclosure sparkle:shortVersionString='1'/>"
         "<sparkle:shortVersionString>2</sparkle:shortVersionString></item>",
         "2"},
        {"<item><enclosure sparkle:shortVersionString='1'/>"
         "<sparkle:shortVersionString> </sparkle:shortVersionString></item>",
         "1"},
        // The build number of one item is no fallback for the next.
        {"<item><sparkle:version>8</sparkle:version></item>"
         "<item><enclosure sparkle:version='99'/></item>",
         "8"},
        {"<item><sparkle:shortVersionString>\n  2.<![CDATA[1]]> "
         "\n</sparkle:shortVersionString></item>",
         "2.1"},
        // Equal versions: the first.
        {"<item><sparkle:version>2.0 beta</sparkle:version></item>"
         "<item><sparkle:version>2.0</sparkle:version></item>",
         "2.0 beta"},
        // What stands outside of items announces nothing.
        {"<enclosure sparkle:shortVersionString='7'/><sparkle:version>8</sparkle:version>"
         "<item><sparkle:version>1</sparkle:version></item>"
         "<sparkle:version>9</sparkle:version>",
         "1"},
    };
    for (const auto& [items, latest] : cases) {
        EXPECT_EQ(appcastLatest(feed(items)), latest) << items;
    }
}

TEST(AppcastLatest, ADamagedFeedAnnouncesNothing) {
    const std::string good = feed("<item><sparkle:version>5</sparkle:version></item>");
    ASSERT_EQ(appcastLatest(good), "5");
    EXPECT_EQ(appcastLatest(good.substr(0, good.size() - 1)), std::nullopt);

    EXPECT_EQ(appcastLatest("<!DOCTYPE rss [<!ENTITY a 'aaaa'>]>" + good), std::nullopt);
    EXPECT_EQ(appcastLatest(test::repeated("<item>", 100'000)), std::nullopt);
    EXPECT_EQ(appcastLatest(feed(std::string(9'000'000, ' '))), std::nullopt);
}

TEST(BrewOutdated, ListsTheCasksInOrder) {
    const auto casks = brewOutdated(R"({
        "formulae": [{"name": "jq", "installed_versions": ["1.6"], "current_version": "1.7"}],
        "casks": [
            {"name": "zed", "installed_versions": ["0.1", "0.2"], "current_version": "0.3"},
            {"name": "atom", "installed_versions": "1.0", "current_version": "1.60", "pinned": false}
        ]})");
    EXPECT_THAT(casks,
                ElementsAre(Outdated{"zed", "0.1, 0.2", "0.3"}, Outdated{"atom", "1.0", "1.60"}));
}

TEST(BrewOutdated, SkipsEntriesOfAnotherShapeAndReadsNothingFromDamage) {
    EXPECT_THAT(brewOutdated(R"({"casks": [7, null, "zed", [],
        {"name": "a", "installed_versions": ["1"]},
        {"name": 5, "installed_versions": ["1"], "current_version": "2"},
        {"name": "b", "installed_versions": [1, null], "current_version": "2"},
        {"name": "c", "installed_versions": [1, "1"], "current_version": "2"}]})"),
                ElementsAre(Outdated{"c", "1", "2"}));
    for (const std::string& output :
         {std::string(), std::string("Error: no such command"), std::string("[]"),
          std::string("{\"casks\": {}}"), std::string("{\"casks\": [{\"name\":"),
          std::string("{\"casks\": [{\"name\": \"\xFF\"}]}"), std::string(100'000, '['),
          std::string(3'000'000, ' ') + "{\"casks\": []}"}) {
        EXPECT_THAT(brewOutdated(output), IsEmpty()) << output.substr(0, 80);
    }
}

TEST(AppStoreVersion, IsTheMacsElseTheFirstOfTheApp) {
    const std::pair<std::string_view, std::optional<std::string>> cases[] = {
        {R"({"resultCount": 1, "results": [{"version": "3.1"}]})", "3.1"},
        {R"({"results": [{"version": "9", "bundleId": "com.example.other"},
                         {"version": "3.1", "bundleId": "com.example.editor"}]})",
         "3.1"},
        {R"({"results": [{"version": "9", "kind": "software"},
                         {"version": "8", "kind": "mac-software"},
                         {"version": "10", "kind": "mac-software"}]})",
         "8"},
        {R"({"results": [{"version": "9"}, {"version": "10"}]})", "9"},
        {R"({"resultCount": 0, "results": []})", std::nullopt},
        {R"({"results": [{"version": 3}]})", std::nullopt},
        {R"({"results": {"version": "3"}})", std::nullopt},
        {"<html>503</html>", std::nullopt},
    };
    for (const auto& [reply, version] : cases) {
        EXPECT_EQ(appStoreVersion(reply, editor.bundleID), version) << reply;
    }
}

TEST(AppInfo, ComesFromTheBundlesInformation) {
    const PropertyList::Value information{
        PropertyList::Dictionary{{"CFBundleShortVersionString", {std::string(" 1.2 ")}},
                                 {"SUFeedURL", {std::string("https://example.invalid/feed")}}}};
    EXPECT_EQ(appInfo(editor, information, true),
              (AppInfo{editor, "1.2", true, "https://example.invalid/feed"}));
    const PropertyList::Value odd{PropertyList::Dictionary{{"SUFeedURL", {std::int64_t{7}}}}};
    EXPECT_EQ(appInfo(editor, odd, false), (AppInfo{editor, "", false, ""}));
    EXPECT_EQ(appInfo(editor, {std::string("no dictionary")}, false),
              (AppInfo{editor, "", false, ""}));
}

TEST(RequestFor, AsksOnlyOverHttpsAndTheAppStoreOnlyWithConsent) {
    const std::string link = "https://example.invalid/feed.xml";
    const struct {
        AppInfo app;
        bool askAppStore;
        std::optional<Request> request;
    } cases[] = {
        {{editor, "1", false, link}, false, Request{Source::feed, link}},
        {{editor, "1", false, "HTTPS://example.invalid"},
         false,
         Request{Source::feed, "HTTPS://example.invalid"}},
        {{editor, "1", false, "http://example.invalid/feed.xml"}, true, std::nullopt},
        {{editor, "1", false, "file:///etc/passwd"}, true, std::nullopt},
        {{editor, "1", false, "https://"}, true, std::nullopt},
        {{editor, "1", false, "https:///feed"}, true, std::nullopt},
        {{editor, "1", false, ""}, true, std::nullopt},
        {{editor, "", false, link}, true, std::nullopt},
        {{editor, "1", true, link}, false, std::nullopt},
        {{editor, "1", true, link},
         true,
         Request{Source::appStore, "https://itunes.apple.com/lookup?bundleId=com.example.editor"}},
        {{{"a&b=c/é", "Odd", "/Applications/Odd.app"}, "1", true, ""},
         true,
         Request{Source::appStore, "https://itunes.apple.com/lookup?bundleId=a%26b%3Dc%2F%C3%A9"}},
        {{{"com.apple.notes", "Notes", "/System/Applications/Notes.app"}, "1", false, link},
         true,
         std::nullopt},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(requestFor(test.app, test.askAppStore), test.request)
            << test.app.app.url << " " << test.app.feedUrl;
    }
}

TEST(Check, ReportsOnlyWhatIsNewerThanInstalled) {
    AppInfo app{editor, "1.9", false, "https://example.invalid/feed"};
    const auto answering = [](std::optional<std::string> answer) {
        return [answer](const std::string&) { return answer; };
    };
    const auto newer = answering(feed("<item><sparkle:version>1.10</sparkle:version></item>"));
    EXPECT_EQ(check(app, false, newer),
              (Update{"Editor", "com.example.editor", "1.9", "1.10", Source::feed}));
    EXPECT_EQ(check(app, false, answering(std::nullopt)), std::nullopt);
    EXPECT_EQ(check(app, false, answering("")), std::nullopt);

    app.version = "1.10.0";
    EXPECT_EQ(check(app, false, newer), std::nullopt);

    app.fromAppStore = true;
    const auto store = answering(R"({"results": [{"version": "2"}]})");
    EXPECT_EQ(check(app, true, store)->source, Source::appStore);
    EXPECT_EQ(check(app, false,
                    [](const std::string& url) -> std::optional<std::string> {
                        ADD_FAILURE() << "asked " << url;
                        return std::nullopt;
                    }),
              std::nullopt);
}

TEST(BrewUpgradeCommand, IsMadeForNamesOfCasksOnly) {
    EXPECT_EQ(brewUpgradeCommand("visual-studio-code"), "brew upgrade --cask visual-studio-code");
    EXPECT_EQ(brewUpgradeCommand("owner/tap/app@1.2"), "brew upgrade --cask owner/tap/app@1.2");
    for (const std::string_view name : {"", "a; rm -rf ~", "$(x)", "--force", "a\nb", "é"}) {
        EXPECT_EQ(brewUpgradeCommand(name), std::nullopt) << name;
    }
}

} // namespace
} // namespace vellory::AppUpdates
