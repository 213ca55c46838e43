// SPDX-License-Identifier: Apache-2.0
#include "shell/images/Backdrop.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace vellory {

namespace {

/// The blur works on a picture this many times smaller: nobody can tell, and it is quick.
constexpr int shrink = 8;
constexpr int blurRadius = 48;
constexpr double saturation = 1.15;
constexpr double darkVeil = 0.30;
constexpr double lightVeil = 0.46;

/// Red, green and blue, 0 to 255 each, and a fourth that stays unused: compilers and processors
/// work on all four at once.
using Pixel = float __attribute__((vector_size(4 * sizeof(float))));
using WholePixel = int __attribute__((vector_size(4 * sizeof(int))));

struct Plane {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    Pixel& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

Plane toPlane(const QImage& image) {
    Plane plane{image.width(), image.height(), {}};
    plane.pixels.reserve(static_cast<std::size_t>(plane.width) *
                         static_cast<std::size_t>(plane.height));
    for (int y = 0; y < plane.height; ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < plane.width; ++x) {
            plane.pixels.push_back(Pixel{static_cast<float>(qRed(line[x])),
                                         static_cast<float>(qGreen(line[x])),
                                         static_cast<float>(qBlue(line[x]))});
        }
    }
    return plane;
}

/// One pass of a box blur along x; the result is turned on its side, so that two passes blur both
/// ways and three pairs of them come close to a Gaussian.
Plane boxBlurredTransposed(Plane& in, int radius) {
    Plane out{in.height, in.width, std::vector<Pixel>(in.pixels.size())};
    const auto count = static_cast<float>(2 * radius + 1);
    for (int y = 0; y < in.height; ++y) {
        Pixel sum{};
        const auto add = [&](int x, float sign) {
            sum += sign * in.at(std::clamp(x, 0, in.width - 1), y);
        };
        for (int x = -radius; x <= radius; ++x) {
            add(x, 1);
        }
        for (int x = 0; x < in.width; ++x) {
            out.at(y, x) = sum / count;
            add(x + radius + 1, 1);
            add(x - radius, -1);
        }
    }
    return out;
}

/// A small fixed pattern of thresholds: spreads the rounding of slow gradients so that no bands
/// show.
float dither(int x, int y) {
    static constexpr std::array<std::array<int, 4>, 4> bayer{
        {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}}};
    return static_cast<float>(
               bayer[static_cast<std::size_t>(y & 3)][static_cast<std::size_t>(x & 3)]) /
           16.0F;
}

QRgb quantized(const Pixel& p, int x, int y) {
    const auto whole = __builtin_convertvector(p + dither(x, y), WholePixel);
    return qRgb(whole[0], whole[1], whole[2]);
}

/// Saturates and veils one pixel.
Pixel toned(const Pixel& p, bool dark) {
    const float grey = 0.2126F * p[0] + 0.7152F * p[1] + 0.0722F * p[2];
    const auto s = static_cast<float>(saturation);
    const auto veil = static_cast<float>(dark ? darkVeil : lightVeil);
    const float veilColor = dark ? 0.0F : 255.0F;
    const auto tone = [&](float channel) {
        const float saturated = std::clamp(grey + (channel - grey) * s, 0.0F, 255.0F);
        return saturated * (1 - veil) + veilColor * veil;
    };
    return Pixel{tone(p[0]), tone(p[1]), tone(p[2])};
}

Pixel mixed(const Pixel& a, const Pixel& b, float t) {
    return a + (b - a) * t;
}

/// Enlarges smoothly with float precision, dithering at the end.
QImage enlarged(Plane& in, QSize size) {
    QImage out(size, QImage::Format_RGB32);
    if (out.isNull()) {
        return out;
    }
    const float scaleX = static_cast<float>(in.width) / static_cast<float>(size.width());
    const float scaleY = static_cast<float>(in.height) / static_cast<float>(size.height());
    std::vector<Pixel> row(static_cast<std::size_t>(in.width));
    for (int y = 0; y < size.height(); ++y) {
        const float sourceY = std::clamp((static_cast<float>(y) + 0.5F) * scaleY - 0.5F, 0.0F,
                                         static_cast<float>(in.height - 1));
        const int y0 = static_cast<int>(sourceY);
        const int y1 = std::min(y0 + 1, in.height - 1);
        for (int x = 0; x < in.width; ++x) {
            row[static_cast<std::size_t>(x)] =
                mixed(in.at(x, y0), in.at(x, y1), sourceY - static_cast<float>(y0));
        }
        auto* line = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const float sourceX = std::clamp((static_cast<float>(x) + 0.5F) * scaleX - 0.5F, 0.0F,
                                             static_cast<float>(in.width - 1));
            const auto x0 = static_cast<std::size_t>(sourceX);
            const std::size_t x1 = std::min(x0 + 1, row.size() - 1);
            line[x] = quantized(mixed(row[x0], row[x1], sourceX - static_cast<float>(x0)), x, y);
        }
    }
    return out;
}

} // namespace

QImage Backdrop::softened(const Image& wallpaper, QSize size, bool dark) {
    if (wallpaper.width < 1 || wallpaper.height < 1 || size.isEmpty()) {
        return gradient(size, dark);
    }
    const QImage view(reinterpret_cast<const uchar*>(wallpaper.pixels.data()), wallpaper.width,
                      wallpaper.height, wallpaper.width * 4, QImage::Format_RGB32);
    // Fill the display as wallpapers do: scaled to cover, the rest cut off evenly.
    const QSize small(std::max(1, size.width() / shrink), std::max(1, size.height() / shrink));
    const QImage covering =
        view.scaled(small, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QImage cut =
        covering
            .copy((covering.width() - small.width()) / 2, (covering.height() - small.height()) / 2,
                  small.width(), small.height())
            .convertToFormat(QImage::Format_RGB32);
    Plane plane = toPlane(cut);
    // Three box blurs of this radius have the spread of one Gaussian of the wanted radius.
    constexpr int radius = std::max(1, blurRadius / shrink / 2);
    for (int pass = 0; pass < 6; ++pass) {
        plane = boxBlurredTransposed(plane, radius);
    }
    for (Pixel& pixel : plane.pixels) {
        pixel = toned(pixel, dark);
    }
    return enlarged(plane, size);
}

QImage Backdrop::gradient(QSize size, bool dark) {
    // From the upper left to the lower right, with a warmer glow at the bottom.
    const Pixel top = dark ? Pixel{38, 46, 72} : Pixel{214, 224, 243};
    const Pixel bottom = dark ? Pixel{58, 40, 66} : Pixel{240, 222, 232};
    const Pixel edge = dark ? Pixel{22, 24, 38} : Pixel{232, 236, 246};
    QImage out(size, QImage::Format_RGB32);
    if (out.isNull()) {
        return out;
    }
    const auto width = static_cast<float>(std::max(1, size.width()));
    const auto height = static_cast<float>(std::max(1, size.height()));
    for (int y = 0; y < size.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(out.scanLine(y));
        const float v = static_cast<float>(y) / height;
        for (int x = 0; x < size.width(); ++x) {
            const float u = static_cast<float>(x) / width;
            const float along = std::clamp(0.35F * u + 0.65F * v, 0.0F, 1.0F);
            const float du = u - 0.5F;
            const float dv = v - 0.45F;
            const float away = std::clamp((du * du + dv * dv) * 1.6F, 0.0F, 0.7F);
            line[x] = quantized(mixed(mixed(top, bottom, along), edge, away), x, y);
        }
    }
    return out;
}

bool Backdrop::isBlank(const Image& image) {
    if (image.pixels.empty()) {
        return true;
    }
    // A sample of pixels that all have one colour: a bare root window.
    const std::size_t step = std::max<std::size_t>(1, image.pixels.size() / 4096);
    const std::uint32_t first = image.pixels.front() & 0xFFFFFFU;
    for (std::size_t i = 0; i < image.pixels.size(); i += step) {
        if ((image.pixels[i] & 0xFFFFFFU) != first) {
            return false;
        }
    }
    return true;
}

void BackdropStore::set(std::shared_future<QImage> image) {
    const std::lock_guard lock(mutex_);
    image_ = std::move(image);
}

QImage BackdropStore::image() const {
    std::unique_lock lock(mutex_);
    const std::shared_future<QImage> image = image_;
    lock.unlock();
    return image.valid() ? image.get() : QImage();
}

QImage BackdropProvider::requestImage(const QString& id, QSize* size, const QSize& requested) {
    Q_UNUSED(id)
    Q_UNUSED(requested)
    QImage image = store_->image();
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace vellory
