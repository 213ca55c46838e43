// SPDX-License-Identifier: Apache-2.0
#include "model/GridNavigation.h"

#include <algorithm>

namespace vellory::GridNavigation {

namespace {

/// A row or a whole page on or back, `distance` items away.
int movedOver(int from, int distance, const Grid& grid) {
    const int pageStart = grid.pageOf(from) * grid.pageSize();
    const int pageEnd = std::min(pageStart + grid.pageSize(), grid.count);
    const int to = from + distance;
    if (to < pageStart) {
        return pageStart > 0 ? pageStart - 1 : from;
    }
    if (to < pageEnd) {
        return to;
    }
    if (pageEnd < grid.count) {
        return pageEnd;
    }
    const int rowsBelow =
        (pageEnd - 1 - pageStart) / grid.columns - (from - pageStart) / grid.columns;
    return rowsBelow > 0 ? pageEnd - 1 : from;
}

} // namespace

int Grid::pageSize() const {
    return isPaged ? std::max(columns * rows, 1) : std::max(count, 1);
}

int Grid::pageCount() const {
    return (count + pageSize() - 1) / pageSize();
}

std::optional<int> moved(std::optional<int> highlight, Move move, const Grid& grid) {
    if (grid.count <= 0) {
        return std::nullopt;
    }
    const int last = grid.count - 1;
    if (!highlight) {
        return move == Move::last ? last : std::clamp(grid.firstShown(), 0, last);
    }
    const int from = std::clamp(*highlight, 0, last);
    const int screen = std::max(grid.columns * grid.rows, 1);
    switch (move) {
    case Move::back:
        return std::max(from - 1, 0);
    case Move::on:
        return std::min(from + 1, last);
    case Move::up:
        return movedOver(from, -grid.columns, grid);
    case Move::down:
        return movedOver(from, grid.columns, grid);
    case Move::first:
        return 0;
    case Move::last:
        return last;
    case Move::pageBack:
        return from >= screen ? from - screen : (grid.isPaged ? from : 0);
    case Move::pageOn:
        if (grid.isPaged && grid.pageOf(from) + 1 == grid.pageCount()) {
            return from;
        }
        return std::min(from + screen, last);
    }
    return from;
}

} // namespace vellory::GridNavigation
