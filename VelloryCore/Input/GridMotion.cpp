// SPDX-License-Identifier: Apache-2.0
#include "Input/GridMotion.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vellory::GridMotion {

namespace {

/// The shape of the grid that the ripple assumes, whatever the screen's.
constexpr double rippleAspect = 1.6;
/// Seconds of momentum that a drag is taken to have when the finger lifts.
constexpr double momentum = 0.16;
/// Points per second from which a drag is a flick, and a flick so fast that it may turn two pages.
constexpr double flickSpeed = 650;
constexpr double fastFlickSpeed = 2600;
/// Shares of the page that a drag must cover to turn one page, and a fast flick to turn two.
constexpr double onePageShare = 0.25;
constexpr double twoPagesShare = 1.6;

} // namespace

Point position(const Cell& cell) {
    return {(cell.column + 0.5) / std::max(cell.columns, 1),
            (cell.row + 0.5) / std::max(cell.rows, 1)};
}

double distance(const Cell& cell, Point origin, double aspect) {
    const auto [x, y] = position(cell);
    return std::hypot((x - origin.x) * aspect, y - origin.y) / std::hypot(aspect, 1.0);
}

double rippleDelay(const Cell& cell, Point origin, double spread) {
    return spread * std::min(distance(cell, origin, rippleAspect), 1.0);
}

Point rippleOffset(const Cell& cell, Point origin, double pull) {
    const auto [x, y] = position(cell);
    const Point away{x - origin.x, y - origin.y};
    const double length = std::hypot(away.x, away.y);
    if (!(length > 0.0001)) {
        return {};
    }
    return {pull * (-away.x / length), pull * (-away.y / length)};
}

double rubberBand(double value, double limit, double coefficient) {
    if (!(limit > 0) || std::isnan(value)) {
        return 0;
    }
    const double pulled = limit * (1 - 1 / (std::fabs(value) * coefficient / limit + 1));
    // For a huge value the fraction rounds to one; the edge is still never reached.
    return std::copysign(std::min(pulled, std::nextafter(limit, 0.0)), value);
}

int pageTarget(int current, Drag drag, double pageWidth, int pageCount) {
    if (pageCount < 2 || !(pageWidth > 0)) {
        return 0;
    }
    const double projected = drag.offset + drag.velocity * momentum;
    std::int64_t step = 0;
    if (drag.velocity > flickSpeed || projected > onePageShare * pageWidth) {
        step = -1;
    } else if (drag.velocity < -flickSpeed || projected < -onePageShare * pageWidth) {
        step = 1;
    }
    if (std::fabs(drag.velocity) > fastFlickSpeed &&
        std::fabs(projected) > twoPagesShare * pageWidth) {
        step *= 2;
    }
    return static_cast<int>(std::clamp<std::int64_t>(current + step, 0, pageCount - 1));
}

} // namespace vellory::GridMotion
