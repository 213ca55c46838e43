// SPDX-License-Identifier: Apache-2.0
#include "model/GridContents.h"

#include <algorithm>
#include <utility>

namespace vellory::GridContents {

std::vector<Tile> shownTiles(const std::vector<Tile>& tiles, const IsShown& isShown) {
    std::vector<Tile> shown;
    shown.reserve(tiles.size());
    for (const Tile& tile : tiles) {
        if (const BundleID* app = tile.app()) {
            if (isShown(*app)) {
                shown.push_back(tile);
            }
            continue;
        }
        Folder folder = *tile.folder();
        std::erase_if(folder.apps, [&](const BundleID& app) { return !isShown(app); });
        if (!folder.apps.empty()) {
            shown.emplace_back(std::move(folder));
        }
    }
    return shown;
}

std::ptrdiff_t boardIndex(const Board& board, const std::vector<Tile>& shown, int place) {
    if (std::cmp_greater_equal(place, shown.size())) {
        return std::ssize(board.tiles);
    }
    const Tile& at = shown[static_cast<std::size_t>(std::max(place, 0))];
    const auto index = board.indexOfTile(at.id());
    return index ? static_cast<std::ptrdiff_t>(*index) : std::ssize(board.tiles);
}

void moveWithin(std::vector<BundleID>& apps, const BundleID& app, int place,
                const IsShown& isShown) {
    const auto from = std::ranges::find(apps, app);
    if (from == apps.end()) {
        return;
    }
    // The target: the shown app that stands at `place`, or the end.
    auto to = apps.begin();
    for (int before = std::max(place, 0); to != apps.end(); ++to) {
        if (isShown(*to) && before-- == 0) {
            break;
        }
    }
    if (from < to) {
        std::rotate(from, from + 1, to);
    } else {
        std::rotate(to, from, from + 1);
    }
}

} // namespace vellory::GridContents
