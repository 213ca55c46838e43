// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "Apps/InstalledApp.h"

namespace vellory {

/// Tells the starts of apps from windows that merely come and go: a splash window, a second one
/// after the first, one that comes back from the tray.
///
/// An app is alive while it has windows or systemd units. It was started when it comes alive with a
/// process that is younger than the last time it was alive, or when somebody announced the start.
/// All times are in seconds since the machine was started, in order.
class StartTracker {
  public:
    /// What the app's first window says.
    struct Window {
        /// When its process began; nothing when the process is not known.
        std::optional<double> processStart;
        /// Names the start that brought it; may be "".
        std::string startupId = {};
        /// This program has started the app and waits for it.
        bool isExpected = false;
    };

    /// Two announcements nearer to each other than this belong to one start.
    static constexpr double startSeconds = 15;

    /// To what the system knows when a process began: one that began in the same moment is younger.
    static constexpr double clockTick = 0.01;

    /// Processes that are older than `now` count as known: they are no news.
    explicit StartTracker(double now) : begin_(now) {}

    /// The app has windows, and was not started to get them.
    void found(const BundleID& app, const std::string& startupId);

    // Each tells whether that was a start.

    /// The app had no window and has one now.
    bool windowsCame(const BundleID& app, const Window& first, double now);
    /// A systemd unit for one start of the app began.
    bool unitCame(const BundleID& app, const std::string& unit, double now);

    void windowsWent(const BundleID& app, double now);
    void unitWent(const std::string& unit, double now);

  private:
    struct App {
        bool hasWindows = false;
        std::set<std::string> units = {};
        std::string startupId = {}; ///< of the last window
        /// Its start was told when its unit came; the window of that start is still to come.
        bool awaitsWindow = false;
        double lastAlive = 0;
        double lastStart = -std::numeric_limits<double>::infinity();

        bool isAlive() const { return hasWindows || !units.empty(); }
    };

    App& at(const BundleID& app) {
        return apps_.try_emplace(app, App{.lastAlive = begin_}).first->second;
    }

    double begin_;
    std::map<BundleID, App> apps_;
    std::map<std::string, BundleID> appOfUnit_;
};

} // namespace vellory
