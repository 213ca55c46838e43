// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// What the desk time machine and its settings say.
namespace vellory::DeskTexts {

inline constexpr std::string_view promise =
    "A week is kept, then it's deleted. App IDs and window frames only: no window titles or "
    "contents.";
inline constexpr std::string_view keyHint = "← → move through the day · Return restores";
inline constexpr std::string_view takeSnapshot = "Take a snapshot now";
inline constexpr std::string_view hideOthers = "Hide apps that weren't open then";
inline constexpr std::string_view saveAsWorkspace = "Save as workspace…";
inline constexpr std::string_view forget = "Delete desk history";
inline constexpr std::string_view forgotten = "Desk history deleted";

inline constexpr std::string_view switchedOff =
    "The desk time machine is off. Turn it on in Settings › Smart.";
inline constexpr std::string_view empty = "No desk history yet";
inline constexpr std::string_view emptyExplanation =
    "vellory notes your open apps and window positions every 15 minutes while you work. Come back "
    "in a little while.";
inline constexpr std::string_view noWindows =
    "No window positions in this snapshot (vellory needs Accessibility to note them). Restoring "
    "opens the apps.";

/// The name of the workspace that restores a desk; `time` as the user's locale writes it.
inline std::string restoreName(std::string_view time) {
    return "Desk at " + std::string(time);
}

} // namespace vellory::DeskTexts
