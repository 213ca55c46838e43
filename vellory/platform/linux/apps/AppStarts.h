// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "platform/RunningApps.h"
#include "platform/Scheduler.h"
#include "platform/linux/apps/Launcher.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory {

/// The starts of apps that are under way: from the wish until the first window, with their startup
/// notification. Lives on while the background works on a start, which holds it weakly.
class AppStarts : public std::enable_shared_from_this<AppStarts> {
  public:
    /// Whether the app's windows are to get the focus when they come.
    enum class Focus { wanted, unwanted };

    struct Request {
        InstalledApp app;
        std::filesystem::path file;          ///< the desktop entry
        std::string action = {};             ///< or "" for the app itself
        std::vector<std::string> links = {}; ///< opened by the app
        Focus focus = Focus::wanted;
    };

    /// `connection` may be null; both must outlive this object.
    AppStarts(const SessionEnvironment& environment, X11Connection* connection,
              Scheduler& scheduler);

    void start(Request request, RunningApps::Completion completion);

    /// Whether a start of the app is under way whose window is still to come.
    bool isUnderWay(const BundleID& id) const;
    /// Whether a window of the app that comes now may be due to a start.
    bool isExpected(const BundleID& id) const { return starts_.contains(id); }
    /// Whose start carries a startup id; "" for one that is not known.
    BundleID appOf(const std::string& startupId) const;

    /// The app's window is there, or never comes.
    void end(const BundleID& id);

    /// Calls `completion` without failure, later and only while this object lives.
    void report(RunningApps::Completion completion);

  private:
    struct Start {
        std::string startupId;
        bool isAnnounced = false;
        std::optional<std::int64_t> pid;
        bool isLaunching = true; ///< the background work has not reported yet
        Scheduler::Handle timeout;
    };

    bool isConnected() const { return connection_ != nullptr && connection_->isAlive(); }
    void launched(const Launcher::Request& request, const Launcher::Outcome& outcome);

    X11Connection* connection_;
    Scheduler& scheduler_;
    std::shared_ptr<const Launcher> launcher_;
    std::map<BundleID, Start> starts_;
    Scheduler::Handle spentTimeout_; ///< has done its work; may be running right now
};

} // namespace vellory
