// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "Board/Board.h"
#include "shell/grid/TileList.h"

namespace vellory {

class AppModel;

/// Tiles as views show them: with the names and pictures of `board`, which may be an earlier one,
/// and what is true of the apps now.
class TileItems {
  public:
    TileItems(const AppModel& model, const Board& board) : model_(model), board_(board) {}

    TileItem of(const Tile& tile) const;
    std::vector<TileItem> of(const std::vector<Tile>& tiles) const;

  private:
    QString icon(const BundleID& id) const;
    QString name(const BundleID& id) const;

    const AppModel& model_;
    const Board& board_;
};

} // namespace vellory
