// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "Board/Folder.h"

namespace vellory {

/// One place on the grid: an app or a folder of apps.
///
/// Stored as an object whose only key names the case: {"app":{"_0":"com.apple.Safari"}} or
/// {"folder":{"_0":{…}}}.
struct Tile {
    static constexpr std::string_view appPrefix = "app:";
    static constexpr std::string_view folderPrefix = "folder:";

    std::variant<BundleID, Folder> content;

    Tile() = default;
    explicit Tile(BundleID app) : content(std::move(app)) {}
    explicit Tile(Folder folder) : content(std::move(folder)) {}

    /// The app that stands here; null for a folder.
    const BundleID* app() const { return std::get_if<BundleID>(&content); }
    /// The folder that stands here; null for an app.
    const Folder* folder() const { return std::get_if<Folder>(&content); }
    Folder* folder() { return std::get_if<Folder>(&content); }

    /// What views know the tile by as it moves: "app:" and the bundle identifier, or "folder:" and
    /// the folder's UUID in upper case.
    std::string id() const;

    friend bool operator==(const Tile&, const Tile&) = default;
};

void toJson(json::Value& object, const Tile& tile);
void fromJson(const json::Value& object, Tile& tile);

} // namespace vellory
