// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Json.h"
#include "Support/Uuid.h"
#include "Workspaces/WindowTiling.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// An installed app as the planners see it.
struct AskApp {
    BundleID id;
    std::string name;
    /// What it is for: see `AppKeywords`.
    std::set<std::string> keywords;
    /// How often it was launched.
    int uses = 0;

    friend bool operator==(const AskApp&, const AskApp&) = default;
};

/// A proposal for what the user is about to do: a workspace before it is one. Made by the keyword
/// planner (`AskFallback`) or completed from what a language model proposed (`AskResolve`).
struct AskPlan {
    // Each with its default written out, so that designated initialisers may leave it out.
    std::string name{};
    std::string symbol{}; ///< the name of a system symbol
    /// In order: the first is the main app.
    std::vector<BundleID> apps{};
    std::vector<std::string> urls{};
    std::vector<std::string> files{};
    Arrangement arrangement = Arrangement::keep;
    bool hideOthers = false;
    /// The saved workspace that this plan reuses.
    std::optional<Uuid> basedOn{};
    /// The saved grid layout to show.
    std::optional<std::string> gridLayout{};
    /// Why these apps, in one sentence; empty from the keyword planner.
    std::string note{};
    bool byModel = false;

    /// The workspace that opens this plan. `existing` is the saved one that it is based on: that
    /// stays as it is, and the plan's apps that it lacks come after its own items. Else a new one
    /// with an identifier from `newID`, whose windows are arranged on `screen` (the visible area of
    /// a display); without a screen they stay where they open.
    Workspace workspace(const std::optional<Workspace::Rect>& screen,
                        const std::optional<Workspace>& existing, const UuidSource& newID) const;

    friend bool operator==(const AskPlan&, const AskPlan&) = default;
};

void toJson(json::Value& object, const AskPlan& plan);
void fromJson(const json::Value& object, AskPlan& plan);

/// Points between windows, and between windows and the edges of the screen.
inline constexpr double askWindowGap = 10;

/// The text for a key in the user's language; `english` where there is no translation.
using Localize = std::function<std::string(std::string_view key, std::string_view english)>;

/// The name under which a plan is shown and saved: translated when the keyword planner took it from
/// its table of tasks, else as it is.
std::string localizedAskName(const AskPlan& plan, const Localize& localize);

} // namespace vellory
