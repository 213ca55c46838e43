// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

namespace vellory {

/// What identifies an app everywhere: on macOS the bundle identifier ("com.apple.Safari"), on Linux
/// the desktop-file id without ".desktop" ("org.mozilla.firefox"). Compared byte by byte.
using BundleID = std::string;

/// An app that is installed on this machine.
struct InstalledApp {
    BundleID bundleID;
    /// The name the user's file manager shows, in the user's language.
    std::string name;
    /// The bundle (macOS) or the desktop entry (Linux), with symbolic links resolved.
    std::filesystem::path url;

    friend bool operator==(const InstalledApp&, const InstalledApp&) = default;
};

} // namespace vellory
