// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/TileItems.h"

#include <algorithm>

#include "model/AppModel.h"
#include "shell/images/IconProvider.h"

namespace vellory {

namespace {
constexpr std::size_t iconsOnFolder = 9;
} // namespace

QString TileItems::icon(const BundleID& id) const {
    const auto custom = board_.icons.find(id);
    return IconProvider::appSource(id,
                                   custom == board_.icons.end() ? std::string() : custom->second);
}

QString TileItems::name(const BundleID& id) const {
    const auto given = board_.renames.find(id);
    return QString::fromStdString(given == board_.renames.end() ? model_.name(id) : given->second);
}

TileItem TileItems::of(const Tile& tile) const {
    TileItem out;
    out.id = QString::fromStdString(tile.id());
    if (const BundleID* id = tile.app()) {
        out.title = name(*id);
        out.icons = {icon(*id)};
        out.isRunning = model_.running().contains(*id);
        if (const auto badge = model_.badges().find(*id); badge != model_.badges().end()) {
            out.badge = QString::fromStdString(badge->second);
        }
        return out;
    }
    const Folder& folder = *tile.folder();
    out.isFolder = true;
    out.title = QString::fromStdString(folder.title);
    for (std::size_t i = 0; i < std::min(iconsOnFolder, folder.apps.size()); ++i) {
        out.icons.append(icon(folder.apps[i]));
    }
    out.color = QString::fromStdString(folder.color.value_or(""));
    out.emoji = QString::fromStdString(folder.emoji.value_or(""));
    out.cover = folder.cover ? IconProvider::fileSource(*folder.cover) : QString();
    return out;
}

std::vector<TileItem> TileItems::of(const std::vector<Tile>& tiles) const {
    std::vector<TileItem> out;
    out.reserve(tiles.size());
    for (const Tile& tile : tiles) {
        out.push_back(of(tile));
    }
    return out;
}

} // namespace vellory
