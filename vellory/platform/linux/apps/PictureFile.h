// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>

#include "platform/Image.h"
#include "platform/linux/GLibPointers.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

/// Pictures from files that anybody may have made: what is too large is refused before it is
/// decoded. Any thread.
namespace vellory::PictureFile {

inline constexpr int maxSide = 16'384;
inline constexpr long long maxArea = 64LL * 1024 * 1024;
inline constexpr long long maxBytes = 32LL * 1024 * 1024;

enum class Fit {
    within, ///< the whole picture, at least one side as long as the frame's
    cover   ///< no part of the frame left empty; one side may be longer
};

/// The picture scaled to a frame while it is decoded, its proportions kept; null when it cannot or
/// may not be read.
glib::Object<GdkPixbuf> load(const std::filesystem::path& file, int width, int height, Fit fit);

/// The part of a picture that lies in a frame whose top left corner is at (`left`, `top`); what the
/// picture does not cover stays transparent.
Image framed(const GdkPixbuf* picture, int left, int top, int width, int height);

/// The smallest rectangle that holds everything that can be seen of a picture.
struct Bounds {
    int left = 0;
    int top = 0;
    int right = 0; ///< one past the last column
    int bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
};
Bounds visibleBounds(const GdkPixbuf* picture);

} // namespace vellory::PictureFile
