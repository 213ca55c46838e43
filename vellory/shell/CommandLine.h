// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>

#include <QSize>
#include <QStringList>

#include "shell/ScreenshotViews.h"

namespace vellory {

/// What the program was asked to do when it was started.
struct CommandLine {
    enum class Show {
        grid,  ///< open the grid, or bring the one of a program that runs already
        hidden ///< wait in the background until summoned
    };

    Show show = Show::grid;
    /// A "vellory://" link to be obeyed in place of that.
    std::optional<std::string> link;
    /// Render a view into this file instead of opening a window.
    std::optional<std::filesystem::path> screenshot;
    /// Of `ScreenshotView::all`, never null once parsed.
    const ScreenshotView* view = nullptr;
    QSize size{1440, 900};
    double scale = 1;
    std::optional<bool> dark;
    /// The one folder that desktop entries are read from. What is arranged meanwhile has nothing to
    /// do with the apps that the user's own board is about.
    std::optional<std::filesystem::path> apps;
    /// A support folder in place of the user's; settings are then kept there as well.
    std::optional<std::filesystem::path> support;
    /// Say on standard output when the grid is on the screen, and what it shows.
    bool report = false;
    bool help = false;
    bool version = false;

    /// Whether nothing that this run changes may reach the user's files: it works on a copy.
    bool leavesFilesAlone() const { return (screenshot || apps) && !support; }

    /// The error is a sentence for the user.
    static std::expected<CommandLine, std::string> parse(const QStringList& arguments);
    static std::string helpText();
};

} // namespace vellory
