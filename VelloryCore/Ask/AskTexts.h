// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// What the Ask panel and its settings say.
namespace vellory::AskTexts {

inline constexpr std::string_view prompt =
    "Say what you're about to do. vellory proposes the apps, links and window layout.";
inline constexpr std::string_view example = "set me up for a client call";
inline constexpr std::string_view howToAsk = "Press Return to ask";
inline constexpr std::string_view thinking = "Thinking on this Mac…";
inline constexpr std::string_view plannedByModel = "On-device Apple Intelligence";
inline constexpr std::string_view plannedByKeywords = "Keyword matching";
inline constexpr std::string_view keyHint = "↩ runs · ⌘S saves";
/// Instead of saving, when the plan is based on a saved workspace.
inline constexpr std::string_view update = "Update workspace";

inline constexpr std::string_view noPlan = "No matching apps";
inline constexpr std::string_view noPlanExplanation =
    "vellory couldn't match that to your apps. Try naming the task (“call”, “writing”, “coding”) "
    "or the apps.";

/// Whether requests are planned by the language model.
enum class ModelStatus {
    available,
    deviceNotEligible,
    notEnabled,
    notReady,
    unavailable, ///< for any other reason
    switchedOff  ///< by the user, for Ask
};

/// The line that the settings show.
constexpr std::string_view statusText(ModelStatus status) {
    switch (status) {
    case ModelStatus::available:
        return "Apple Intelligence is on: Ask vellory uses the on-device model.";
    case ModelStatus::deviceNotEligible:
        return "This Mac can't run Apple Intelligence. Ask vellory uses keyword matching instead.";
    case ModelStatus::notEnabled:
        return "Apple Intelligence is off (System Settings › Apple Intelligence & Siri). Ask "
               "vellory uses keyword matching until you turn it on.";
    case ModelStatus::notReady:
        return "The on-device model is still downloading. Ask vellory uses keyword matching for "
               "now.";
    case ModelStatus::unavailable:
        return "The on-device model isn't available. Ask vellory uses keyword matching instead.";
    case ModelStatus::switchedOff:
        return "Apple Intelligence is turned off for Ask in Settings › Smart.";
    }
    return {};
}

} // namespace vellory::AskTexts
