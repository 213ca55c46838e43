// SPDX-License-Identifier: Apache-2.0
#include "Board/Tile.h"

namespace vellory {

std::string Tile::id() const {
    if (const Folder* inside = folder()) {
        return std::string(folderPrefix) + inside->id.string();
    }
    return std::string(appPrefix) + *app();
}

void toJson(json::Value& object, const Tile& tile) {
    if (const Folder* folder = tile.folder()) {
        json::write(object["folder"], "_0", *folder);
    } else {
        json::write(object["app"], "_0", *tile.app());
    }
}

void fromJson(const json::Value& object, Tile& tile) {
    const auto [name, payload] = json::onlyCase(object);
    if (name == "app") {
        json::require(payload, "_0", tile.content.emplace<BundleID>());
    } else if (name == "folder") {
        json::require(payload, "_0", tile.content.emplace<Folder>());
    } else {
        throw json::DecodingError("unknown kind of tile");
    }
}

} // namespace vellory
