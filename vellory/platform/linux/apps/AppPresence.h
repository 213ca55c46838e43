// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/apps/StartTracker.h"
#include "platform/linux/windows/AppWindows.h"

namespace vellory {

/// Which apps have windows, and what has changed since the last look: who was started, who has lost
/// the last window. It asks no X server: windows and units are told to it. Times are in seconds
/// since the machine was started, in order.
class AppPresence {
  public:
    /// What it has to know of the system.
    struct Probe {
        /// When a process began; nothing for one that is not known.
        std::function<std::optional<double>(std::int64_t pid)> processStart;
        /// Whether this program has started the app and waits for its window.
        std::function<bool(const BundleID&)> isExpected;
    };

    struct News {
        std::vector<BundleID> launched = {};
        std::vector<BundleID> quit = {};
        /// Apps with a window that was not there before, also those that were running.
        std::set<BundleID> withNewWindows = {};
        /// An app has windows again that was not started for it: back from the tray, say.
        bool isChangedBeside = false;
    };

    /// Whether one that has no window any more has quit. A window manager that starts lists the
    /// windows that it finds one by one: until it has, nobody has.
    enum class Missing { quit, stillListed };

    AppPresence(Probe probe, double now) : probe_(std::move(probe)), tracker_(now) {}

    /// The windows at the beginning: nobody was started for them.
    void begin(const std::vector<AppWindow>& windows);

    News compare(const std::vector<AppWindow>& windows, Missing missing, double now);

    /// A systemd unit for one start of the app began; true when that is news.
    bool unitCame(const BundleID& app, const std::string& unit, double now) {
        return tracker_.unitCame(app, unit, now);
    }
    void unitWent(const std::string& unit, double now) { tracker_.unitWent(unit, now); }

  private:
    bool wasStarted(const BundleID& app, const std::vector<AppWindow>& windows, double now);

    Probe probe_;
    StartTracker tracker_;
    std::set<BundleID> apps_;        ///< with windows, as of the last look
    std::set<xcb_window_t> windows_; ///< of the last look
};

} // namespace vellory
