// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace vellory {

/// Where the tiles of a grid stand, by their place in its order.
///
/// On pages, which stand side by side, the next one where reading goes on; a position counts pages
/// then, with fractions while one slides over another. Or as one list, with all rows below one
/// another; a position counts rows then. In both, `rows` fill the height that is seen at once.
struct GridGeometry {
    QSizeF size{0, 0}; ///< of what is seen at once
    int columns = 1;
    int rows = 1;
    double sideMargin = 0; ///< left and right of the columns
    bool mirrored = false; ///< reading goes from right to left
    bool isList = false;

    /// How many tiles are seen at once.
    int perPage() const { return std::max(1, columns * rows); }
    /// At least one, and just one for a list.
    int pageCount(int count) const;
    /// How far the position moves on for the tiles after those seen: a page, or a list's rows.
    int screen() const { return isList ? rows : 1; }

    /// The cell of a tile, counted from the content's origin; and where that origin lies while the
    /// grid stands at a position.
    QRectF cell(int index) const;
    QPointF origin(double position) const;

    /// The tiles that can be seen at a position, partly or wholly.
    struct Range {
        int first = 0;
        int end = 0;
        bool contains(int index) const { return index >= first && index < end; }
        friend bool operator==(const Range&, const Range&) = default;
    };
    Range shown(double position, int count) const;

    /// The cell nearest to a point of what is seen, and how far into it the point is: 0 to 1 in the
    /// direction of reading.
    struct Place {
        int cell = 0;
        double across = 0;
    };
    Place placeAt(QPointF point, double position, int count) const;

    /// How much later than the first a tile begins to appear, 0 to 1, when the grid opens from
    /// `origin` (0 to 1 across what is seen).
    double rippleDelay(int index, QPointF origin) const;

    friend bool operator==(const GridGeometry&, const GridGeometry&) = default;
};

} // namespace vellory
