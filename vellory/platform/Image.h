// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vellory {

/// A picture in memory: rows from top to bottom without padding, each pixel 0xAARRGGBB with the
/// colours premultiplied by alpha.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    friend bool operator==(const Image&, const Image&) = default;
};

} // namespace vellory
