// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/WindowGeometry.h"

#include <algorithm>
#include <cmath>

namespace vellory {

namespace {

/// Coordinates are signed 16-bit numbers in the X protocol, and servers count the far edge of a
/// window in them too.
constexpr int lowest = -32768;
constexpr int highest = 32767;

/// One direction of a request: `start` and `length` of the visible frame, what lies between its
/// edge and the corner that is placed, and what frame and inner window differ by.
struct Span {
    std::int32_t start;
    std::uint32_t length;
};
Span spanFor(double start, double length, int corner, int difference, int outer) {
    // Clamped before they become integers: a conversion that overflows has no defined result.
    const int wanted = static_cast<int>(std::lround(std::min<double>(length, highest)));
    const int inner = std::clamp(wanted - difference, 1, highest - std::max(outer, 0));
    const int begin =
        static_cast<int>(std::lround(std::clamp<double>(start, lowest, highest))) - corner;
    return {std::clamp(begin, lowest, highest - inner - std::max(outer, 0)),
            static_cast<std::uint32_t>(inner)};
}

} // namespace

Workspace::Rect WindowGeometry::frame() const {
    const int left = decorations.left + border - shadows.left;
    const int right = decorations.right + border - shadows.right;
    const int top = decorations.top + border - shadows.top;
    const int bottom = decorations.bottom + border - shadows.bottom;
    return {static_cast<double>(x - left), static_cast<double>(y - top),
            static_cast<double>(width + left + right), static_cast<double>(height + top + bottom)};
}

std::optional<WindowGeometry::Request>
WindowGeometry::requestFor(const Workspace::Rect& frame) const {
    if (!std::isfinite(frame.x) || !std::isfinite(frame.y) || !std::isfinite(frame.width) ||
        !std::isfinite(frame.height) || frame.width <= 0 || frame.height <= 0) {
        return std::nullopt;
    }
    const int across = decorations.left + decorations.right + 2 * border;
    const int down = decorations.top + decorations.bottom + 2 * border;
    const Span horizontal =
        spanFor(frame.x, frame.width, shadows.left, across - shadows.left - shadows.right, across);
    const Span vertical =
        spanFor(frame.y, frame.height, shadows.top, down - shadows.top - shadows.bottom, down);
    return Request{horizontal.start, vertical.start, horizontal.length, vertical.length};
}

} // namespace vellory
