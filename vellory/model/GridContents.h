// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "Board/Board.h"

/// From the board to what the grid shows of it, and back from a place on the grid to the board:
/// tiles that are not shown keep their places in between.
namespace vellory::GridContents {

using IsShown = std::function<bool(const BundleID&)>;

/// The tiles with shown apps only, in order. A folder of which nothing is left is dropped.
std::vector<Tile> shownTiles(const std::vector<Tile>& tiles, const IsShown& isShown);

/// The index on the board before which something put at `place` among the shown tiles belongs; the
/// end of the board for a place past the last.
std::ptrdiff_t boardIndex(const Board& board, const std::vector<Tile>& shown, int place);

/// Moves `app` within the apps of a folder to `place` among those that are shown, counted before
/// the move. Nothing happens to a list that does not hold it.
void moveWithin(std::vector<BundleID>& apps, const BundleID& app, int place,
                const IsShown& isShown);

} // namespace vellory::GridContents
