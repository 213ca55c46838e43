// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskTools.h"

#include <algorithm>

#include "Search/PreparedNames.h"

namespace vellory::AskTools {

namespace {

constexpr std::size_t mostApps = 8;
constexpr std::size_t mostNameMatches = 3;

void append(std::string& list, std::string_view separator, std::string_view text) {
    list.append(list.empty() ? std::string_view() : separator).append(text);
}

} // namespace

std::string findApps(std::string_view purpose, const AskApps& apps) {
    std::vector<const AskApp*> found = apps.rank(purpose);
    FuzzySearch::PreparedNames names;
    for (const AskApp& app : apps.all()) {
        names.add(app.name);
    }
    const auto named = names.rank(purpose);
    for (std::size_t i = 0; i < std::min(named.size(), mostNameMatches); ++i) {
        const AskApp* app = &apps.all()[named[i].index];
        if (std::ranges::find(found, app) == found.end()) {
            found.push_back(app);
        }
    }
    if (found.empty()) {
        return std::string("No installed app fits “").append(purpose).append("”.");
    }
    std::string answer;
    for (std::size_t i = 0; i < std::min(found.size(), mostApps); ++i) {
        append(answer, "\n", found[i]->name);
    }
    return answer;
}

std::string listWorkspaces(const std::vector<Workspace>& workspaces, const NameOf& nameOf) {
    std::string answer;
    for (const Workspace& workspace : workspaces) {
        std::string apps;
        for (const BundleID& id : workspace.appIDs()) {
            append(apps, ", ", nameOf(id));
        }
        append(answer, "\n", workspace.name + ": " + apps);
    }
    return answer.empty() ? "The user has no saved workspaces." : answer;
}

std::string listLayouts(const std::vector<std::string>& layouts) {
    std::string names;
    for (const std::string& layout : layouts) {
        append(names, ", ", layout);
    }
    return "Saved grid layouts: " + (names.empty() ? std::string("none") : names) +
           ". Window arrangements: keep, focus, split, columns, grid.";
}

} // namespace vellory::AskTools
