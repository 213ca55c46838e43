// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Board/Tile.h"
#include "Support/Json.h"
#include "Support/UserDefaults.h"
#include "Support/Uuid.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// What the grid shows while one of the desktop's Focus modes is on: certain folders, and the apps
/// of certain workspaces.
///
/// Stored in the user's settings: never rename a field.
struct GridFilter {
    static constexpr std::string_view defaultsKey = "vellory.focusFilter";

    /// The label that the user sees.
    std::string name{};
    /// Folders that stay.
    std::vector<Uuid> folders{};
    /// Workspaces whose apps stay.
    std::vector<Uuid> workspaces{};
    /// When set, the apps of this workspace stay and no others.
    std::optional<Uuid> onlyWorkspace{};

    /// Whether the filter names nothing, and so restricts nothing.
    bool isEmpty() const;

    /// The apps that may be shown; nothing for no restriction. Identifiers of workspaces that are
    /// gone stand for no apps.
    std::optional<std::set<BundleID>> allowedApps(const std::vector<Workspace>& list) const;

    /// Those of `tiles` that may be shown, in their order: apps by `allowedApps`, folders by
    /// `folders`, whatever is in them. A filter without restriction gives all of them.
    std::vector<Tile> tiles(const std::vector<Tile>& tiles,
                            const std::vector<Workspace>& list) const;

    /// The stored filter; nothing when there is none or it cannot be read.
    static std::optional<GridFilter> load(const UserDefaults& defaults);

    /// Stores `filter`; nothing takes the stored one away.
    static void save(const std::optional<GridFilter>& filter, UserDefaults& defaults);

    friend bool operator==(const GridFilter&, const GridFilter&) = default;
};

void toJson(json::Value& object, const GridFilter& filter);
void fromJson(const json::Value& object, GridFilter& filter);

} // namespace vellory
