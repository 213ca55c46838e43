// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/windows/WindowMatcher.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory {

/// A window that task bars show.
struct AppWindow {
    xcb_window_t window = XCB_WINDOW_NONE;
    BundleID app;
    std::int64_t pid = 0;
    bool isHidden = false; ///< iconified
    /// The id of the start that brought the window, as far as its app says; may be "".
    std::string startupId = {};
};

/// The windows that the window manager lists, with the apps that they belong to. What never changes
/// about a window is asked for once; a reading of all windows costs a few round trips, however many
/// there are.
class AppWindows {
  public:
    /// `startedApp` tells which app's start carried a startup id.
    AppWindows(X11Connection& connection, std::shared_ptr<DesktopEntries> entries,
               std::function<BundleID(const std::string&)> startedApp);

    /// All windows of known apps in the order in which they came; nothing without a window manager.
    std::optional<std::vector<AppWindow>> read();

    /// Takes note of an event; true when what `read` gives may now be another.
    bool noteEvent(const xcb_generic_event_t& event);

    /// Whether the window manager lists the window, of whatever app.
    bool isListed(xcb_window_t window);

    /// `windows` with the one on top last.
    std::vector<AppWindow> stacked(std::vector<AppWindow> windows);

  private:
    struct Known {
        WindowEvidence evidence;
        std::int64_t pid = 0;
        std::string startupId;
        std::optional<BundleID> app;
    };

    void learn(const std::vector<xcb_window_t>& windows);
    void identify(Known& known) const;
    void matchAnew();
    bool isIdentity(xcb_atom_t property) const;

    X11Connection& connection_;
    std::shared_ptr<DesktopEntries> entries_;
    std::function<BundleID(const std::string&)> startedApp_;
    std::optional<WindowMatcher> matcher_;
    unsigned matchedRevision_ = 0;
    std::map<xcb_window_t, Known> known_;
    std::vector<xcb_atom_t> identityAtoms_;
    std::set<xcb_atom_t> shownTypes_;
    std::set<xcb_atom_t> desktopTypes_; ///< never an app's, whatever else they say they are
    bool tellsProcesses_ = false;       ///< the server knows which process a client is
};

} // namespace vellory
