// SPDX-License-Identifier: Apache-2.0
#include "Import/ImportedBoard.h"

#include <algorithm>

namespace vellory {

namespace {

bool showSame(const Tile& a, const Tile& b) {
    const Folder* one = a.folder();
    const Folder* other = b.folder();
    if (one == nullptr || other == nullptr) {
        return a == b;
    }
    return one->title == other->title && one->apps == other->apps;
}

} // namespace

Board importedBoard(const Layout& layout, const Board& current,
                    const std::vector<BundleID>& installed, const UuidSource& uuids) {
    Board board(layout, uuids);
    board.hidden = current.hidden;
    board.renames = current.renames;
    board.icons = current.icons;
    board.reconcile(installed);
    const bool isSame = std::ranges::equal(board.tiles, current.tiles, showSame) &&
                        board.renames == current.renames && board.icons == current.icons;
    return isSame ? current : board;
}

} // namespace vellory
