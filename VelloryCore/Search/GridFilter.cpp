// SPDX-License-Identifier: Apache-2.0
#include "Search/GridFilter.h"

#include <algorithm>

namespace vellory {

namespace {

bool contains(const std::vector<Uuid>& ids, const Uuid& id) {
    return std::ranges::find(ids, id) != ids.end();
}

} // namespace

bool GridFilter::isEmpty() const {
    return folders.empty() && workspaces.empty() && !onlyWorkspace;
}

std::optional<std::set<BundleID>>
GridFilter::allowedApps(const std::vector<Workspace>& list) const {
    if (!onlyWorkspace && workspaces.empty()) {
        return folders.empty() ? std::nullopt : std::optional(std::set<BundleID>());
    }
    std::set<BundleID> apps;
    for (const Workspace& workspace : list) {
        if (onlyWorkspace ? workspace.id == *onlyWorkspace : contains(workspaces, workspace.id)) {
            const auto ids = workspace.appIDs();
            apps.insert(ids.begin(), ids.end());
            if (onlyWorkspace) {
                break; // of two with the same identifier the first counts, as everywhere
            }
        }
    }
    return apps;
}

std::vector<Tile> GridFilter::tiles(const std::vector<Tile>& tiles,
                                    const std::vector<Workspace>& list) const {
    const auto allowed = allowedApps(list);
    if (!allowed) {
        return tiles;
    }
    std::vector<Tile> shown;
    std::ranges::copy_if(tiles, std::back_inserter(shown), [&](const Tile& tile) {
        const Folder* folder = tile.folder();
        return folder != nullptr ? contains(folders, folder->id) : allowed->contains(*tile.app());
    });
    return shown;
}

std::optional<GridFilter> GridFilter::load(const UserDefaults& defaults) {
    const auto stored = defaults.string(defaultsKey);
    if (!stored) {
        return std::nullopt;
    }
    const auto filter = json::decode<GridFilter>(*stored);
    return filter ? std::optional(*filter) : std::nullopt;
}

void GridFilter::save(const std::optional<GridFilter>& filter, UserDefaults& defaults) {
    if (filter) {
        defaults.set(defaultsKey, json::encode(*filter));
    } else {
        defaults.remove(defaultsKey);
    }
}

void toJson(json::Value& object, const GridFilter& filter) {
    json::write(object, "name", filter.name);
    json::write(object, "folders", filter.folders);
    json::write(object, "workspaces", filter.workspaces);
    json::write(object, "onlyWorkspace", filter.onlyWorkspace);
}

void fromJson(const json::Value& object, GridFilter& filter) {
    json::require(object, "name", filter.name);
    json::require(object, "folders", filter.folders);
    json::require(object, "workspaces", filter.workspaces);
    json::readIfPresent(object, "onlyWorkspace", filter.onlyWorkspace);
}

} // namespace vellory
