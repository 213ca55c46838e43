// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/PictureFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vellory::PictureFile {

namespace fs = std::filesystem;

namespace {

/// Shadows fainter than this do not count as part of a picture.
constexpr std::uint8_t visibleAlpha = 24;

/// One pixel of a pixbuf, whose rows hold straight (not premultiplied) 8-bit channels.
struct Reader {
    explicit Reader(const GdkPixbuf* picture)
        : bytes(gdk_pixbuf_read_pixels(picture)), stride(gdk_pixbuf_get_rowstride(picture)),
          channels(gdk_pixbuf_get_n_channels(picture)),
          hasAlpha(gdk_pixbuf_get_has_alpha(picture) != FALSE) {}

    const std::uint8_t* at(int x, int y) const {
        return bytes + static_cast<std::ptrdiff_t>(y) * stride +
               static_cast<std::ptrdiff_t>(x) * channels;
    }
    std::uint8_t alpha(int x, int y) const { return hasAlpha ? at(x, y)[3] : 255; }

    const std::uint8_t* bytes;
    int stride;
    int channels;
    bool hasAlpha;
};

std::uint32_t premultiplied(std::uint32_t colour, std::uint32_t alpha) {
    return (colour * alpha + 127) / 255;
}

} // namespace

glib::Object<GdkPixbuf> load(const fs::path& file, int width, int height, Fit fit) {
    std::error_code error;
    // A pipe or device would be waited for.
    if (!fs::is_regular_file(file, error) ||
        static_cast<long long>(fs::file_size(file, error)) > maxBytes || error) {
        return nullptr;
    }
    int fullWidth = 0;
    int fullHeight = 0;
    if (gdk_pixbuf_get_file_info(file.c_str(), &fullWidth, &fullHeight) == nullptr ||
        fullWidth < 1 || fullHeight < 1 || fullWidth > maxSide || fullHeight > maxSide ||
        static_cast<long long>(fullWidth) * fullHeight > maxArea) {
        return nullptr;
    }
    const double across = static_cast<double>(width) / fullWidth;
    const double down = static_cast<double>(height) / fullHeight;
    const double factor = fit == Fit::within ? std::min(across, down) : std::max(across, down);
    const auto scaled = [&](int side) {
        return std::clamp(static_cast<int>(std::lround(side * factor)), 1, maxSide);
    };
    return glib::Object<GdkPixbuf>(gdk_pixbuf_new_from_file_at_scale(
        file.c_str(), scaled(fullWidth), scaled(fullHeight), FALSE, nullptr));
}

Image framed(const GdkPixbuf* picture, int left, int top, int width, int height) {
    Image image{width, height, {}};
    image.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const Reader reader(picture);
    const int firstX = std::max(left, 0);
    const int endX = std::min(left + width, gdk_pixbuf_get_width(picture));
    const int endY = std::min(top + height, gdk_pixbuf_get_height(picture));
    for (int y = std::max(top, 0); y < endY; ++y) {
        std::uint32_t* out =
            image.pixels.data() + static_cast<std::ptrdiff_t>(y - top) * width + (firstX - left);
        for (int x = firstX; x < endX; ++x, ++out) {
            const std::uint8_t* pixel = reader.at(x, y);
            const std::uint32_t alpha = reader.hasAlpha ? pixel[3] : 255;
            *out = alpha << 24 | premultiplied(pixel[0], alpha) << 16 |
                   premultiplied(pixel[1], alpha) << 8 | premultiplied(pixel[2], alpha);
        }
    }
    return image;
}

Bounds visibleBounds(const GdkPixbuf* picture) {
    const Reader reader(picture);
    const int width = gdk_pixbuf_get_width(picture);
    const int height = gdk_pixbuf_get_height(picture);
    Bounds bounds{width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (reader.alpha(x, y) >= visibleAlpha) {
                bounds.left = std::min(bounds.left, x);
                bounds.right = std::max(bounds.right, x + 1);
                bounds.top = std::min(bounds.top, y);
                bounds.bottom = std::max(bounds.bottom, y + 1);
            }
        }
    }
    return bounds;
}

} // namespace vellory::PictureFile
