// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include <QSize>
#include <QString>

class QQuickItem;

namespace vellory {

class AppModel;
class LauncherController;
class LauncherState;

/// Whether every picture that the scene shows has arrived and nothing moves any more.
bool isSettled(const QQuickItem& root);

/// Renders the view named `view` at `size` into a PNG file, once its icons have arrived. The error
/// is a sentence for the user.
std::expected<void, std::string> takeScreenshot(LauncherController& controller, AppModel& model,
                                                LauncherState& state, const QString& view,
                                                QSize size, const std::filesystem::path& file);

} // namespace vellory
