// SPDX-License-Identifier: Apache-2.0
#include "Board/AutoFolders.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_set>
#include <utility>

#include "Apps/AppDiscovery.h"

namespace vellory::AutoFolders {

namespace {

constexpr std::string_view categoryPrefix = "public.app-category.";
constexpr std::string_view utilities = "Utilities";
constexpr std::string_view games = "Games";

constexpr auto titles = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"developer-tools", "Developer"},
    {"graphics-design", "Creative"},
    {"photography", "Creative"},
    {"video", "Creative"},
    {"productivity", "Productivity"},
    {"business", "Productivity"},
    {"utilities", utilities},
    {"social-networking", "Social"},
    {"music", "Entertainment"},
    {"entertainment", "Entertainment"},
    {"lifestyle", "Entertainment"},
    {"sports", "Entertainment"},
    {"education", "Information"},
    {"reference", "Information"},
    {"books", "Information"},
    {"news", "Information"},
    {"weather", "Information"},
    {"finance", "Finance"},
    {"healthcare-fitness", "Health"},
    {"medical", "Health"},
    {"travel", "Travel"},
    {"navigation", "Travel"},
    {"games", games},
});

std::optional<std::string_view> titleFor(const InstalledApp& app, const CategoryOf& category) {
    if (app.url.native().find("/Utilities") != std::string::npos) {
        return utilities;
    }
    return folderTitleForCategory(category(app));
}

using AppList = std::vector<const InstalledApp*>;

void sortByName(AppList& apps, const Text::Collator& collator) {
    Text::sortByName(apps, collator, [](const InstalledApp* app) { return app->name; });
}

} // namespace

std::optional<std::string> categoryOf(const InstalledApp& app) {
    const auto facts = AppDiscovery::information(app.url);
    const auto* category = facts ? facts->find("LSApplicationCategoryType") : nullptr;
    const std::string* text = category != nullptr ? category->string() : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<std::string_view> folderTitleForCategory(const std::optional<std::string>& category) {
    if (!category) {
        return std::nullopt;
    }
    const std::string name = Text::replacingAll(*category, categoryPrefix, "");
    const auto* const found =
        std::ranges::find(titles, name, &std::pair<std::string_view, std::string_view>::first);
    if (found != titles.end()) {
        return found->second;
    }
    return name.ends_with("-games") ? std::optional(games) : std::nullopt;
}

Board boardFor(const std::vector<InstalledApp>& apps, std::size_t minimum,
               const CategoryOf& category, const Text::Collator& collator,
               const UuidSource& uuids) {
    std::map<std::string_view, AppList> groups;
    AppList loose;
    std::unordered_set<std::string_view> placed;
    placed.reserve(apps.size());
    for (const InstalledApp& app : apps) {
        if (placed.insert(app.bundleID).second) {
            const auto title = titleFor(app, category);
            (title ? groups[*title] : loose).push_back(&app);
        }
    }
    Board board;
    for (auto& [title, group] : groups) {
        if (group.size() < minimum) {
            std::ranges::copy(group, std::back_inserter(loose));
            continue;
        }
        sortByName(group, collator);
        Folder folder{.id = uuids(), .title = std::string(title), .apps = {}};
        for (const InstalledApp* app : group) {
            folder.apps.push_back(app->bundleID);
        }
        board.tiles.emplace_back(std::move(folder));
    }
    sortByName(loose, collator);
    for (const InstalledApp* app : loose) {
        board.tiles.emplace_back(app->bundleID);
    }
    return board;
}

} // namespace vellory::AutoFolders
