// SPDX-License-Identifier: Apache-2.0
#include "model/PageDrag.h"

#include <algorithm>
#include <cmath>

#include "Input/GridMotion.h"

namespace vellory {

namespace {

/// So many times further sideways than up or down.
constexpr double sideways = 2;
/// How far the pages give way past the first and the last, in pages, and how readily at first.
constexpr double mostPagesPastEnd = 0.35;
constexpr double pageReadiness = 0.55;

double pastEnd(double pages) {
    return GridMotion::rubberBand(pages, mostPagesPastEnd, pageReadiness);
}

} // namespace

bool PageDrag::beginsWith(double dx, double dy) const {
    return pages_.count > 1 && std::abs(dx) > sideways * std::abs(dy);
}

double PageDrag::position(double travelled) const {
    const double asked = pages_.current + onwards() * travelled / std::max(pages_.width, 1.0);
    const double last = std::max(pages_.count - 1, 0);
    const double within = std::clamp(asked, 0.0, last);
    return within + pastEnd(asked - within);
}

PageDrag::Rest PageDrag::letGo(double travelled, double velocity) const {
    // A push to the left leads on where one reads from the left.
    const double toRight = -onwards();
    return {GridMotion::pageTarget(pages_.current, {toRight * travelled, toRight * velocity},
                                   pages_.width, pages_.count),
            onwards() * velocity / std::max(pages_.width, 1.0)};
}

int PageDrag::turnAt(double x) const {
    const bool isAtEdge = x < edgeZone || x > pages_.width - edgeZone;
    if (!isAtEdge) {
        return 0;
    }
    const bool isAtRight = x > pages_.width / 2;
    return isAtRight != pages_.rightToLeft ? 1 : -1;
}

} // namespace vellory
