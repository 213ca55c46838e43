// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

/// Where the keyboard's highlight goes on a grid that is read row by row, page after page.
namespace vellory::GridNavigation {

enum class Move {
    back, ///< one item towards the first
    on,   ///< one item towards the last
    up,
    down,
    first,
    last,
    pageBack,
    pageOn
};

struct Grid {
    int count = 0;   ///< items on all pages
    int columns = 1; ///< items in a row
    int rows = 1;    ///< rows on a page; in one long list, rows that are seen at once
    bool isPaged = true;
    int page = 0; ///< the page shown; where a highlight begins
    int top = 0;  ///< in one long list, the first row that is wholly seen

    /// How many items a page holds.
    int pageSize() const;
    int pageCount() const;
    int pageOf(int index) const { return index / pageSize(); }
    int firstShown() const { return isPaged ? page * pageSize() : top * columns; }
    bool isInFirstRow(int index) const { return (isPaged ? index % pageSize() : index) < columns; }
};

/// The highlighted item after a move; nothing on an empty grid. Past the first or last item of a
/// page it turns to the page beside: to its last or first item. Where there is no further page it
/// stays at the edge, and a step down into a last row that is too short ends on the last item.
/// Without a highlight any move begins on the page shown, with its first item (`last` excepted).
std::optional<int> moved(std::optional<int> highlight, Move move, const Grid& grid);

} // namespace vellory::GridNavigation
