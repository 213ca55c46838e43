// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The arithmetic behind the grid's animations and gestures. Tiles are told by column and row;
/// positions run from 0 to 1 across the grid, with y downwards. No state.
namespace vellory::GridMotion {

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// A tile and the grid it stands in. A grid of no columns or rows counts as one of one.
struct Cell {
    int column = 0;
    int row = 0;
    int columns = 1;
    int rows = 1;
};

/// The centre of the tile in the unit square.
Point position(const Cell& cell);

/// How far the tile is from `origin` on a grid `aspect` times as wide as high, as a share of the
/// grid's diagonal: corner to opposite corner is 1.
double distance(const Cell& cell, Point origin, double aspect);

/// How long after the grid opens the tile starts to move: the ripple runs outwards from `origin`
/// and reaches the farthest tiles after `spread` (in the unit of `spread`).
double rippleDelay(const Cell& cell, Point origin, double spread);

/// Where the tile starts from: a displacement of length `pull` towards `origin`, none for a tile
/// right under it.
Point rippleOffset(const Cell& cell, Point origin, double pull);

/// How far the grid follows a drag of `value` past its edge: about `value * coefficient` at first,
/// then ever less, and always under `limit`. 0 where `limit` is not positive.
double rubberBand(double value, double limit, double coefficient);

/// A horizontal drag as it ends. Positive is to the right, towards the page before.
struct Drag {
    double offset = 0;   ///< points
    double velocity = 0; ///< points per second
};

/// The page, counted from 0, on which a drag from page `current` comes to rest.
int pageTarget(int current, Drag drag, double pageWidth, int pageCount);

} // namespace vellory::GridMotion
