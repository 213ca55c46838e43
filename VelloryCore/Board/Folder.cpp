// SPDX-License-Identifier: Apache-2.0
#include "Board/Folder.h"

namespace vellory {

void toJson(json::Value& object, const Folder& folder) {
    json::write(object, "id", folder.id);
    json::write(object, "title", folder.title);
    json::write(object, "apps", folder.apps);
    json::write(object, "color", folder.color);
    json::write(object, "emoji", folder.emoji);
    json::write(object, "cover", folder.cover);
}

void fromJson(const json::Value& object, Folder& folder) {
    json::require(object, "id", folder.id);
    json::require(object, "title", folder.title);
    json::require(object, "apps", folder.apps);
    json::readIfPresent(object, "color", folder.color);
    json::readIfPresent(object, "emoji", folder.emoji);
    json::readIfPresent(object, "cover", folder.cover);
}

} // namespace vellory
