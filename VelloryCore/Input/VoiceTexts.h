// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// What is said around voice commands.
namespace vellory::VoiceTexts {

inline constexpr std::string_view gettingReady = "Getting ready…";
inline constexpr std::string_view listening = "Listening… let go when you're done";

/// A title and what stands below it.
struct Explanation {
    std::string_view title;
    std::string_view text;
};

inline constexpr Explanation permissions{
    "Voice commands need two permissions",
    "macOS will ask for the Microphone and Speech Recognition. vellory listens only while you hold "
    "the voice shortcut, recognises speech on this Mac, and never saves or sends audio."};
inline constexpr Explanation refused{
    "vellory can't use the microphone or speech recognition",
    "Allow vellory in System Settings › Privacy & Security › Microphone and Speech Recognition, "
    "then turn voice commands on again."};
inline constexpr std::string_view notOnThisMac =
    "On-device speech recognition isn't available for your language on this Mac";

} // namespace vellory::VoiceTexts
