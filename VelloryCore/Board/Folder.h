// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Json.h"
#include "Support/Uuid.h"

namespace vellory {

/// A folder of apps on the grid. Folders are never nested: what they hold are apps.
///
/// Stored in the board file: append fields only, never rename.
struct Folder {
    /// Given once, when the folder is made.
    Uuid id;
    std::string title;
    /// In the order in which the open folder shows them.
    std::vector<BundleID> apps;
    /// Name of the tint.
    std::optional<std::string> color{};
    /// Shown as the folder's badge.
    std::optional<std::string> emoji{};
    /// Path of a cover image: a copy of the user's own, kept under `VelloryPaths::icons`.
    std::optional<std::string> cover{};

    friend bool operator==(const Folder&, const Folder&) = default;
};

void toJson(json::Value& object, const Folder& folder);
void fromJson(const json::Value& object, Folder& folder);

} // namespace vellory
