// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>

#include "platform/Desktop.h"
#include "platform/Image.h"
#include "platform/linux/session/SessionEnvironment.h"

/// What lies behind the windows. Any thread.
namespace vellory::Wallpaper {

/// The picture that the desktop's settings name; nothing on desktops without such a setting.
std::optional<std::filesystem::path> file(const SessionEnvironment& environment);

/// The first picture of a slide show as GNOME describes them in XML.
std::optional<std::filesystem::path> firstOfSlideShow(const std::filesystem::path& description);

/// The picture that the root window shows in `area`, as programs leave it there that set
/// wallpapers on plain window managers.
std::optional<Image> ofRootWindow(const SessionEnvironment& environment, const Desktop::Area& area);

/// All that can be seen of `area` now.
std::optional<Image> ofScreen(const SessionEnvironment& environment, const Desktop::Area& area);

} // namespace vellory::Wallpaper
