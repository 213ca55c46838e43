// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "Import/LaunchpadImporter.h"
#include "Import/RivalImport.h"

/// What people read around an import.
namespace vellory::ImportTexts {

/// Shown with the notice of an import that worked.
inline constexpr std::string_view noticeSymbol = "square.and.arrow.down";
inline constexpr double noticeSeconds = 1.8;

inline constexpr std::string_view launchpadName = "Launchpad";
inline constexpr std::string_view launchpadSettingsButton = "Import Launchpad layout";
inline constexpr std::string_view launchpadWelcomeButton = "Import my old Launchpad layout";
inline constexpr std::string_view launchpadWelcomeNote =
    "Brings back your pages and folders, if this Mac still has a Launchpad layout from before "
    "macOS 26.";

inline constexpr std::string_view rivalSettingsNote =
    "Reads LaunchNext's layout directly, and JSON or property-list backups from LaunchOS, "
    "Launchie, AppGrid, BuhoLaunchpad and LaunchMe that list apps by path or bundle ID. Your "
    "current grid is kept in Backup & History.";
inline constexpr std::string_view chooseBackupMessage =
    "Choose a layout backup or export from another launcher";

/// "Imported 120 apps and 8 folders from Launchpad".
std::string notice(const Layout& layout, std::string_view from);

// What the layout history calls the change.
inline constexpr std::string_view launchpadReason = "Imported Launchpad";
/// "Imported from LaunchNext".
std::string reason(std::string_view from);

struct Alert {
    std::string title;
    std::string text;

    friend bool operator==(const Alert&, const Alert&) = default;
};

Alert launchpadFailed(const LaunchpadImporter::ImportError& error);
Alert sourceFailed(RivalImport::Source source);
Alert chosenFileFailed();

} // namespace vellory::ImportTexts
