// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <optional>
#include <span>
#include <string>

#include <QSize>
#include <QString>
#include <QStringList>

namespace vellory {

class AppModel;
class LauncherController;
class LauncherState;

/// A view that a picture can be taken of. The table of them is all there is to adding one.
struct ScreenshotView {
    /// What there is to arrange.
    struct Scene {
        LauncherController& controller;
        AppModel& model;
        LauncherState& state;
        QSize size;
    };
    /// The error is a sentence for the user.
    using Arranged = std::expected<void, std::string>;

    const char* name;
    /// Brings the launcher into the state that the picture shows.
    Arranged (*arrange)(const Scene& scene);
    /// What can be done only once the view has been drawn; null for nothing.
    void (*act)(const Scene& scene) = nullptr;
    /// The appearance the picture has whatever was chosen.
    std::optional<bool> dark = std::nullopt;

    static std::span<const ScreenshotView> all();
    /// Null for an unknown name.
    static const ScreenshotView* named(const QString& name);
    static QStringList names();
};

} // namespace vellory
