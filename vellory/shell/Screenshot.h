// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include "shell/ScreenshotViews.h"

class QQuickItem;

namespace vellory {

/// Whether every picture that the scene shows has arrived and nothing moves any more.
bool isSettled(const QQuickItem& root);

/// Renders a view into a PNG file, once its icons have arrived. The error is a sentence for the
/// user.
std::expected<void, std::string> takeScreenshot(const ScreenshotView& view,
                                                const ScreenshotView::Scene& scene,
                                                const std::filesystem::path& file);

} // namespace vellory
