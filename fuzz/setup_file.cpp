// SPDX-License-Identifier: Apache-2.0
// Any text as a setup file and as the stored filter of the grid: what is read is written so that it
// reads the same, and a filter shows a part of the grid in its order.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Board/BoardStore.h"
#include "Search/GridFilter.h"

using namespace vellory;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void checkFilter(const GridFilter& filter, const BoardStore::Backup& backup) {
    MemoryDefaults defaults;
    GridFilter::save(filter, defaults);
    require(GridFilter::load(defaults) == filter);
    const auto shown = filter.tiles(backup.board.tiles, backup.workspaces);
    auto at = backup.board.tiles.begin();
    for (const Tile& tile : shown) {
        at = std::find(at, backup.board.tiles.end(), tile);
        require(at != backup.board.tiles.end());
        ++at;
    }
    require(!filter.isEmpty() || shown == backup.board.tiles);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    MemoryDefaults defaults;
    defaults.set(GridFilter::defaultsKey, std::string(text));
    if (const auto filter = GridFilter::load(defaults)) {
        checkFilter(*filter, {});
    }
    const auto backup = json::decode<BoardStore::Backup>(text);
    if (!backup) {
        return 0;
    }
    require(json::decode<BoardStore::Backup>(json::encode(*backup)) == *backup);
    GridFilter filter;
    checkFilter(filter, *backup);
    for (const Workspace& workspace : backup->workspaces) {
        filter.workspaces.push_back(workspace.id);
        checkFilter(filter, *backup);
        filter.onlyWorkspace = workspace.id;
    }
    checkFilter(filter, *backup);
    return 0;
}
