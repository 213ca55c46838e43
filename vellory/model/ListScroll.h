// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/ScrollPager.h"

namespace vellory {

/// How a grid scrolls that is shown as one list of rows. A place to scroll to is the row at the top
/// of what is seen, with fractions.
struct ListScroll {
    double top = 0;
    int seen = 1;         ///< rows seen at once
    int count = 0;        ///< rows there are
    double rowHeight = 0; ///< device-independent pixels

    /// A carried tile this close to the top or bottom scrolls the list.
    static constexpr double edgeZone = 32;

    /// The last place there is to scroll to.
    double last() const;
    double clamped(double place) const;
    /// Scrolled as little as it takes to see all of a row.
    double showing(int row) const;
    /// Turned by a wheel, a row for each notch, or pushed by fingers on a touch pad.
    double scrolled(const Scroll& scroll) const;
    /// On (or back) by so many screens, which have a row in common.
    double turned(int screens) const;

    /// Under a finger that has travelled so many pixels down. Past both ends it follows ever less.
    double dragged(double travelled) const;
    /// How it comes to rest once the finger leaves at `velocity`, in pixels a second.
    struct Rest {
        double place = 0;
        double speed = 0; ///< in rows a second
    };
    Rest letGo(double travelled, double velocity) const;

    /// How many screens on (1) or back (-1) a tile asks for that is held `y` below the top; 0 away
    /// from both edges.
    int turnAt(double y) const;
};

} // namespace vellory
