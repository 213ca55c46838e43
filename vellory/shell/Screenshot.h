// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include <QSize>
#include <QString>

namespace vellory {

class AppModel;
class LauncherController;
class LauncherState;

/// Renders the view named `view` at `size` into a PNG file, once its icons have arrived. The error is
/// a sentence for the user.
std::expected<void, std::string> takeScreenshot(LauncherController& controller, AppModel& model,
                                                LauncherState& state, const QString& view,
                                                QSize size, const std::filesystem::path& file);

} // namespace vellory
