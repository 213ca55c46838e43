// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// What people read around workspaces: their editor, the notices of opening and closing one, and
/// the settings of what opens one by itself.
namespace vellory::WorkspaceTexts {

// --- Making one from what is open ------------------------------------------------------------

inline constexpr std::string_view newFromOpen = "New workspace from what's open";
inline constexpr std::string_view takeWindows = "Window positions (needs Accessibility)";
inline constexpr std::string_view takeFolders = "Finder folders that are open";
inline constexpr std::string_view takeTabs = "Browser tabs (Safari, Chrome, Brave, Edge, Arc)";
inline constexpr std::string_view asksOnce =
    "macOS asks once before vellory can read Finder or a browser.";
inline constexpr std::string_view allowAccessibility = "Allow vellory in Accessibility";
inline constexpr std::string_view allowAccessibilityHow =
    "To save and restore window positions, turn on vellory in System Settings › Privacy & Security "
    "› Accessibility, then try again.";

// --- The editor ------------------------------------------------------------------------------

inline constexpr std::string_view focusGrid = "Show only this workspace's apps in the grid";
inline constexpr std::string_view closing =
    "Closing also shows the apps the workspace hid and reopens the ones it quit. Apps ask to save "
    "as usual when they quit.";
inline constexpr std::string_view focusSession =
    "Open this workspace for a set time; when it ends, vellory puts everything back";

// --- Notices, with the symbols they are shown with -------------------------------------------

/// Said of a workspace that was deleted while it was open, and of a session without one.
inline constexpr std::string_view unnamed = "Workspace";
inline constexpr std::string_view unnamedSession = "Focus";

/// Shown with the workspace's own symbol.
inline std::string opened(std::string_view name) {
    return std::string(name) + " workspace";
}

inline constexpr std::string_view closedSymbol = "rectangle.3.group";
inline std::string closed(std::string_view name) {
    return std::string(name) + " closed";
}

inline constexpr std::string_view sessionBeganSymbol = "timer";
inline std::string sessionBegan(std::string_view name, int minutes) {
    return std::string(name) + " focus: " + std::to_string(minutes) + " minutes";
}

inline constexpr std::string_view sessionFinishedSymbol = "checkmark.circle.fill";
/// The system sound that goes with it.
inline constexpr std::string_view sessionFinishedSound = "Glass";
inline std::string sessionFinished(std::string_view name) {
    return std::string(name) + " focus session finished";
}

inline constexpr std::string_view windowsNeedPermissionSymbol = "macwindow.badge.plus";
inline constexpr std::string_view windowsNeedPermission =
    "Allow vellory in Accessibility to restore window positions";

/// Saved from a plan.
inline constexpr std::string_view savedSymbol = "square.and.arrow.down";
inline std::string saved(std::string_view name) {
    return "Saved workspace “" + std::string(name) + "”";
}

// --- Focus triggers --------------------------------------------------------------------------

inline constexpr std::string_view focusModes = "Your Focus modes";
inline constexpr std::string_view readFocusDirectly =
    "Read the active Focus directly (needs Full Disk Access)";
inline constexpr std::string_view cannotReadFocus = "vellory can't read Focus yet";
inline constexpr std::string_view focusByAutomation =
    "Without it, add a Shortcuts automation “When <Focus> turns on” → Open URL vellory://focus/"
    "<Focus name>. Each workspace's editor shows the exact link.";

} // namespace vellory::WorkspaceTexts
