// SPDX-License-Identifier: Apache-2.0
#include "Search/GridFilter.h"

#include <gmock/gmock.h>

#include "support/Boards.h"
#include "support/Records.h"

namespace vellory::search_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::UnorderedElementsAre;

constexpr auto id = test::uuid;

Workspace workspace(std::uint8_t number, const std::vector<BundleID>& apps) {
    Workspace out;
    out.id = id(number);
    out.items.push_back(Workspace::Item::url("https://example.org"));
    for (const auto& app : apps) {
        out.items.push_back(Workspace::Item::app(app));
    }
    return out;
}

const std::vector<Workspace> list{workspace(1, {"mail", "notes"}), workspace(2, {"maps", "mail"}),
                                  workspace(3, {"music"}), workspace(1, {"later.twin"})};

const Tile mail(BundleID("mail"));
const Tile music(BundleID("music"));
const Tile work(Folder{.id = id(11), .title = "Work", .apps = {"music"}});
const Tile play(Folder{.id = id(12), .title = "Play", .apps = {"mail"}});
const std::vector<Tile> grid{music, work, mail, play};

TEST(GridFilter, OfNothingShowsEverything) {
    const GridFilter filter{.name = "Work"};
    EXPECT_TRUE(filter.isEmpty());
    EXPECT_EQ(filter.allowedApps(list), std::nullopt);
    EXPECT_EQ(filter.tiles(grid, list), grid);
}

TEST(GridFilter, OfFoldersShowsThemAndNoLooseApps) {
    const GridFilter filter{.folders = {id(11), id(99)}};
    EXPECT_FALSE(filter.isEmpty());
    EXPECT_THAT(filter.allowedApps(list), Optional(IsEmpty()));
    EXPECT_THAT(filter.tiles(grid, list), ElementsAre(work));
}

TEST(GridFilter, OfWorkspacesShowsTheAppsOfAllThatExist) {
    const GridFilter filter{.workspaces = {id(2), id(3), id(99)}};
    EXPECT_FALSE(filter.isEmpty());
    EXPECT_THAT(filter.allowedApps(list), Optional(UnorderedElementsAre("maps", "mail", "music")));
    EXPECT_THAT(filter.tiles(grid, list),
                ElementsAre(music, mail)); // folders go by identifier only
    EXPECT_THAT((GridFilter{.workspaces = {id(99)}}).allowedApps(list), Optional(IsEmpty()));
    EXPECT_THAT((GridFilter{.folders = {id(12)}, .workspaces = {id(3)}}).tiles(grid, list),
                ElementsAre(music, play));
}

TEST(GridFilter, OfOnlyOneWorkspaceLooksAtNoOtherForApps) {
    GridFilter filter{.folders = {id(11)}, .workspaces = {id(3)}, .onlyWorkspace = id(1)};
    EXPECT_THAT(filter.allowedApps(list), Optional(UnorderedElementsAre("mail", "notes")));
    EXPECT_THAT(filter.tiles(grid, list), ElementsAre(work, mail));
    filter.onlyWorkspace = id(99);
    EXPECT_THAT(filter.allowedApps(list), Optional(IsEmpty()));
    EXPECT_FALSE((GridFilter{.onlyWorkspace = id(99)}).isEmpty());
    EXPECT_THAT((GridFilter{.onlyWorkspace = id(99)}).tiles(grid, list), IsEmpty());
}

TEST(GridFilter, IsKeptInTheSettingsUntilNothingIsSaved) {
    MemoryDefaults defaults;
    EXPECT_EQ(GridFilter::load(defaults), std::nullopt);
    const GridFilter filter{
        .name = "Arbeit 🧑‍💻", .folders = {id(0xAB)}, .onlyWorkspace = id(1)};
    GridFilter::save(filter, defaults);
    EXPECT_EQ(GridFilter::load(defaults), filter);
    EXPECT_EQ(json::parse(defaults.string("vellory.focusFilter").value()).value(),
              json::Value::parse(R"({"name": "Arbeit 🧑‍💻", "workspaces": [],
                  "folders": ["00000000-0000-0000-0000-0000000000AB"],
                  "onlyWorkspace": "00000000-0000-0000-0000-000000000001"})"));
    GridFilter::save(GridFilter{.workspaces = {id(3), id(2)}}, defaults);
    EXPECT_EQ(GridFilter::load(defaults), (GridFilter{.workspaces = {id(3), id(2)}}));
    GridFilter::save(std::nullopt, defaults);
    EXPECT_EQ(defaults.value("vellory.focusFilter"), std::nullopt);
}

TEST(GridFilter, WhatCannotBeReadIsNoFilter) {
    const auto loaded = [](const UserDefaults::Value& stored) {
        MemoryDefaults defaults;
        defaults.set("vellory.focusFilter", stored);
        return GridFilter::load(defaults);
    };
    for (const std::string text : {"", "{", "[]"}) {
        EXPECT_EQ(loaded(text), std::nullopt) << text;
    }
    const auto isRead = [&](const std::string& text) { return loaded(text).has_value(); };
    test::StrictReading(isRead, {"onlyWorkspace"}, {})
        .expectOf(json::encode(GridFilter{
            .name = "W", .folders = {id(1)}, .workspaces = {id(2)}, .onlyWorkspace = id(3)}));
    EXPECT_EQ(loaded(true), std::nullopt);
    EXPECT_EQ(loaded(std::string(R"({"name": "W", "folders": [], "workspaces": [], "new": 1,
                                     "onlyWorkspace": null})")),
              (GridFilter{.name = "W"}));
}

} // namespace
} // namespace vellory::search_tests
