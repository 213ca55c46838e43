// SPDX-License-Identifier: Apache-2.0
#include "shell/images/ShadowProvider.h"

#include <algorithm>

namespace vellory {

namespace {

/// How dark the shadow is at a distance from its outer edge, 0 to 1: a smooth ramp.
double ramp(int distance, int length) {
    const double t = std::clamp((distance + 0.5) / length, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

} // namespace

QImage ShadowProvider::requestImage(const QString& id, QSize* size, const QSize&) {
    const int blur = std::clamp(id.section('/', 0, 0).toInt(), 1, 128);
    const double darkness = std::clamp(id.section('/', 1, 1).toInt(), 0, 100) / 100.0;
    const int border = 2 * blur;
    const int side = 2 * border + 2;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        const double down = ramp(std::min(y, side - 1 - y), border);
        for (int x = 0; x < side; ++x) {
            const double across = ramp(std::min(x, side - 1 - x), border);
            image.setPixel(x, y, qRgba(0, 0, 0, static_cast<int>(255 * darkness * down * across)));
        }
    }
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace vellory
