// SPDX-License-Identifier: Apache-2.0
#include "model/GridGeometry.h"

#include <cmath>

#include "Input/GridMotion.h"

namespace vellory {

namespace {
/// Keeps what lies on the last edge within the last cell.
constexpr double justInside = 0.001;
} // namespace

int GridGeometry::pageCount(int count) const {
    return isList ? 1 : std::max(1, (count + perPage() - 1) / perPage());
}

QRectF GridGeometry::cell(int index) const {
    const int page = isList ? 0 : index / perPage();
    const int slot = isList ? index : index % perPage();
    const int row = slot / columns;
    const int column = slot % columns;
    const int shownColumn = mirrored ? columns - 1 - column : column;
    const double width = (size.width() - 2 * sideMargin) / columns;
    const double height = size.height() / rows;
    const double pageLeft = (mirrored ? -1 : 1) * page * size.width();
    return {pageLeft + sideMargin + shownColumn * width, row * height, width, height};
}

QPointF GridGeometry::origin(double position) const {
    if (isList) {
        return {0, -position * size.height() / rows};
    }
    return {(mirrored ? 1 : -1) * position * size.width(), 0};
}

GridGeometry::Range GridGeometry::shown(double position, int count) const {
    const int each = isList ? columns : perPage();
    const double seen = isList ? rows : 1;
    const int first = std::max(0, static_cast<int>(std::floor(position)));
    const int end = std::max(first, static_cast<int>(std::ceil(position + seen)));
    return {std::min(first * each, count), std::min(end * each, count)};
}

GridGeometry::Place GridGeometry::placeAt(QPointF point, double position, int count) const {
    const double width = std::max(1.0, (size.width() - 2 * sideMargin) / columns);
    const double height = std::max(1.0, size.height() / rows);
    const double x = mirrored ? size.width() - point.x() : point.x();
    const double columnsIn = std::clamp((x - sideMargin) / width, 0.0, columns - justInside);
    const double rowsIn = std::clamp(point.y() / height, 0.0, rows - justInside);
    const int column = static_cast<int>(columnsIn);
    const double across = columnsIn - column;
    if (isList) {
        return {static_cast<int>(rowsIn + std::max(0.0, position)) * columns + column, across};
    }
    const int page = std::clamp(static_cast<int>(std::lround(position)), 0, pageCount(count) - 1);
    return {page * perPage() + static_cast<int>(rowsIn) * columns + column, across};
}

double GridGeometry::rippleDelay(int index, QPointF origin) const {
    const int slot = isList ? index : index % perPage();
    const int row = slot / columns;
    const int column = slot % columns;
    return GridMotion::rippleDelay(
        {mirrored ? columns - 1 - column : column, std::min(row, rows - 1), columns, rows},
        {origin.x(), origin.y()}, 1.0);
}

} // namespace vellory
