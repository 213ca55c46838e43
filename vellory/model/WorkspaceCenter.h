// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include <QObject>

#include "Support/Calendar.h"
#include "Support/Uuid.h"
#include "Workspaces/OpenDesk.h"
#include "Workspaces/Workspace.h"
#include "Workspaces/WorkspaceSession.h"
#include "model/Prefs.h"
#include "model/WorkspaceList.h"
#include "model/WorkspaceRunner.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Opens and closes workspaces, keeps the one session there is, ends focus sessions when their time
/// is up, and makes a workspace of what is open. Main thread only.
class WorkspaceCenter : public QObject {
    Q_OBJECT

  public:
    /// How often a focus session is looked at.
    static constexpr double sessionInterval = 15.0;

    /// Minutes of a focus session: when nothing else was said, and at least and at most.
    static constexpr int usualMinutes = 25;
    static constexpr int leastMinutes = 1;
    static constexpr int mostMinutes = 600;

    /// What a workspace made of what is open takes in beside the apps.
    struct Choices {
        bool windows = false; ///< the frames of their windows
        bool finder = false;  ///< the folders open in the file manager
        bool tabs = false;    ///< the tabs of browsers
    };

    struct Parts {
        WorkspaceRunner::Parts runner;
        WorkspaceList& workspaces;
        Prefs& prefs;
        std::function<std::set<BundleID>()> protectedApps;
        std::string locale;
        Calendar calendar;
        UuidSource newID;
        /// This program, and what the desktop itself is made of: no part of a task.
        std::set<BundleID> neverTaken;
    };

    explicit WorkspaceCenter(Parts parts, QObject* parent = nullptr);

    /// What the opening of the active workspace changed; nothing when none is open.
    const std::optional<WorkspaceSession>& session() const { return session_; }
    /// Seconds left of the focus session.
    std::optional<double> remaining() const;

    /// Opens a workspace; with `minutes` as a focus session that ends by itself. Another one that
    /// is open is closed first, but for the apps that both use.
    void open(const Workspace& workspace, std::optional<int> minutes);
    /// Puts everything back as it was before the workspace was opened, but for the apps in `keep`.
    /// Returns the apps that were asked to quit for it.
    std::set<BundleID> close(bool silently, const std::set<BundleID>& keep = {});

    /// Adds an empty workspace to the list. Returns its identity.
    Uuid create(const std::string& name);
    /// Adds a copy under this name right after the original, without its triggers: both would open,
    /// one after the other. Nothing when there is no such workspace.
    void duplicate(const Uuid& id, const std::string& name);
    /// Makes a workspace of what is open, adds it to the list and hands it to `done`: later when
    /// other programs have to be asked.
    void makeFromOpen(Choices choices, std::function<void(const Workspace&)> done);
    /// The frames of the windows of the workspace's apps, as they are now. None without permission.
    std::vector<Workspace::WindowSlot> captureWindows(const Workspace& workspace) {
        return runner_.captureWindows(workspace);
    }
    /// Whether windows can be read and moved; with `prompt` the user is asked to allow it.
    bool canPlaceWindows(bool prompt);

    /// To be told of every app that was started.
    void appLaunched(const BundleID& app) { runner_.appLaunched(app); }

  Q_SIGNALS:
    /// A workspace is about to change the desk.
    void willOpen();
    /// A session began, or ended.
    void sessionChanged();
    /// A focus session goes on: `remaining` is another.
    void remainingChanged();
    void launcherHideRequested();

  private:
    std::string nameOf(const Uuid& workspace, std::string_view otherwise) const;
    void scheduleSessionEnd();
    void checkSession();
    void finishMaking(const OpenDesk& desk, Choices choices,
                      const std::function<void(const Workspace&)>& done);

    Parts parts_;
    WorkspaceRunner runner_;
    std::optional<WorkspaceSession> session_;
    Scheduler::Handle sessionTimer_;
};

} // namespace vellory
