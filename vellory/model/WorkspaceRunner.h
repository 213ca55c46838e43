// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Support/Date.h"
#include "Workspaces/Workspace.h"
#include "Workspaces/WorkspaceSession.h"
#include "model/Notices.h"
#include "model/Ports.h"
#include "platform/RunningApps.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Carries out on the desk what opening and closing a workspace ask for: starts apps, opens files
/// and links, sets other apps aside, reads and restores the frames of windows. Main thread only.
class WorkspaceRunner {
  public:
    /// How long windows that are not there yet are waited for, and how often they are looked for.
    static constexpr double patience = 8.0;
    static constexpr double pollInterval = 0.5;
    /// So many items are opened in one go; the rest follows, as many at a time, once what waits on
    /// the main thread has had its turn.
    static constexpr std::size_t itemsAtOnce = 8;
    /// Windows of that width or height or less are no windows to a user.
    static constexpr double leastSize = 40;

    struct Parts {
        RunningApps& runningApps;
        WindowPlacer& windowPlacer;
        Desktop& desktop;
        Displays& displays;
        Clock& clock;
        Scheduler& scheduler;
        /// Where an app is, be it on the grid or not.
        std::function<std::optional<InstalledApp>(const BundleID&)> locate;
        Notices& notices;
    };

    explicit WorkspaceRunner(Parts parts) : parts_(std::move(parts)) {}

    /// Restores the workspace's windows, opens its items, sets the other apps aside and brings its
    /// first app to the front. What an earlier opening still waits for is given up.
    void open(const Workspace& workspace, const std::set<BundleID>& protectedApps);

    /// Undoes what a session did, but for the apps in `keep`. Returns the apps that were asked to
    /// quit: they run a little longer.
    std::set<BundleID> close(const WorkspaceSession::ClosePlan& plan,
                             const std::set<BundleID>& keep);

    /// The running apps that have a place in the dock or task bar, in the desktop's order.
    std::vector<RunningApp> regularApps() const;

    /// The frames of the windows of the workspace's apps. None without permission.
    std::vector<Workspace::WindowSlot> captureWindows(const Workspace& workspace);

    /// Gives windows their frames: now those that are there, the others as they come, until the
    /// deadline. Slots without a window by then are dropped.
    void placeWindows(std::vector<Workspace::WindowSlot> slots, Date deadline);
    /// The slots whose windows are waited for.
    const std::vector<Workspace::WindowSlot>& pendingSlots() const { return pending_; }

    /// To be told of every app that was started: the first app of a workspace comes to the front
    /// when it appears.
    void appLaunched(const BundleID& app);

  private:
    /// Ends what an opening still waits for.
    void giveUp();
    /// Opens the items from `next` on, a slice of them now.
    void openItems(std::size_t next);
    void openItem(const Workspace::Item& item);
    /// What follows once every item was opened.
    void finishOpening();
    void perform(const WorkspaceSession::Action& action);
    void placePending();

    Parts parts_;
    // The opening that is under way.
    Workspace workspace_;
    std::set<BundleID> protectedApps_;
    std::optional<BundleID> firstOpened_;
    Scheduler::Handle nextItems_;
    /// The app that is to come to the front when it appears, and until when.
    std::optional<BundleID> awaited_;
    Date awaitedUntil_;
    std::vector<Workspace::WindowSlot> pending_;
    Date deadline_;
    Scheduler::Handle nextLook_;
};

} // namespace vellory
