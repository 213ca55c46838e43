// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "Support/Date.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// What one opening of a workspace changes on the desk, so that closing can undo exactly that.
struct WorkspaceSession {
    /// What closing does with the apps that the workspace launched.
    enum class CloseApps { quit, hide, keep };

    /// What is to be done to one running app.
    enum class Change { quit, hide, unhide };
    struct Action {
        BundleID app;
        Change change = Change::quit;
        friend bool operator==(const Action&, const Action&) = default;
    };

    /// How a session is undone.
    struct ClosePlan {
        std::vector<BundleID> quit{};
        std::vector<BundleID> hide{};
        std::vector<BundleID> unhide{};
        std::vector<BundleID> reopen{};

        /// What happens to each of `running`, in their order: at most one change for each, quitting
        /// before hiding before showing, and nothing to the apps in `keep`.
        std::vector<Action> actions(const std::vector<BundleID>& running,
                                    const std::set<BundleID>& keep) const;
        /// `reopen` without the apps in `keep`.
        std::vector<BundleID> appsToReopen(const std::set<BundleID>& keep) const;

        friend bool operator==(const ClosePlan&, const ClosePlan&) = default;
    };

    Uuid workspace{};
    Date started{};
    std::optional<Date> ends{};       ///< the end of a focus session; none when open-ended
    std::vector<BundleID> launched{}; ///< the workspace's apps that were not running, in item order
    std::vector<BundleID> hidden{};   ///< apps that it hid and that were not hidden before
    std::vector<BundleID> quit{};     ///< apps that it quit

    /// What opening `workspace` at `now` will change: with `minutes` for a focus session.
    static WorkspaceSession begin(const Workspace& workspace, const std::vector<BundleID>& running,
                                  const std::set<BundleID>& hiddenNow,
                                  const std::set<BundleID>& protectedApps, Date now,
                                  std::optional<int> minutes);

    /// What setting the other apps aside asks of each of `running`, in their order.
    static std::vector<Action> asideActions(const Workspace& workspace,
                                            const std::vector<BundleID>& running,
                                            const std::set<BundleID>& protectedApps);

    ClosePlan closePlan(CloseApps closeApps) const;

    /// Seconds left, never below 0; nothing for an open-ended session.
    std::optional<double> remaining(Date now) const;

    friend bool operator==(const WorkspaceSession&, const WorkspaceSession&) = default;
};

/// The name under which the choice is stored: "quit", "hide" or "keep".
std::string_view rawValue(WorkspaceSession::CloseApps choice);
std::optional<WorkspaceSession::CloseApps> closeAppsFromRawValue(std::string_view text);

void toJson(json::Value& object, const WorkspaceSession& session);
void fromJson(const json::Value& object, WorkspaceSession& session);

} // namespace vellory
