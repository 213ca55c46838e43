// SPDX-License-Identifier: Apache-2.0
#include "model/ListScroll.h"

#include <algorithm>

#include "Input/GridMotion.h"

namespace vellory {

namespace {

/// How far the list gives way past its ends, in rows, and how readily at first.
constexpr double mostRowsPastEnd = 1;
constexpr double rowReadiness = 0.55;
/// How long a list runs on at the speed with which a finger left it.
constexpr double runOnSeconds = 0.35;

} // namespace

double ListScroll::last() const {
    return std::max(count - seen, 0);
}

double ListScroll::clamped(double place) const {
    return std::clamp(place, 0.0, last());
}

double ListScroll::showing(int row) const {
    return clamped(std::clamp(top, static_cast<double>(row - seen + 1), static_cast<double>(row)));
}

double ListScroll::scrolled(const Scroll& scroll) const {
    const double rows = scroll.precise ? scroll.dy / std::max(rowHeight, 1.0) : scroll.dy;
    return clamped(top - rows);
}

double ListScroll::turned(int screens) const {
    return clamped(top + screens * std::max(seen - 1, 1));
}

double ListScroll::dragged(double travelled) const {
    const double asked = top - travelled / std::max(rowHeight, 1.0);
    const double within = clamped(asked);
    return within + GridMotion::rubberBand(asked - within, mostRowsPastEnd, rowReadiness);
}

ListScroll::Rest ListScroll::letGo(double travelled, double velocity) const {
    const double speed = -velocity / std::max(rowHeight, 1.0);
    return {clamped(top - travelled / std::max(rowHeight, 1.0) + speed * runOnSeconds), speed};
}

int ListScroll::turnAt(double y) const {
    if (y < edgeZone) {
        return top > 0 ? -1 : 0;
    }
    return y > seen * rowHeight - edgeZone && top < last() ? 1 : 0;
}

} // namespace vellory
