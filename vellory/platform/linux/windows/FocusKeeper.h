// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

#include "Apps/InstalledApp.h"

namespace vellory {

/// Decides who is to have the focus while apps open that shall not take it. Window managers give it
/// to most windows that come, whatever their start said of it, so it is given back at once.
///
/// A window that comes or is shown again may take it away once, within moments; what happens later
/// is the user's doing. All times are in seconds, in order.
class FocusKeeper {
  public:
    /// How long after its start an app may still come with windows.
    static constexpr double startSeconds = 15;
    /// How soon after a window has come the window manager gives it the focus.
    static constexpr double graceSeconds = 1;

    /// `app` opens in the background: windows that it gets, and those of `shown` that it has, are
    /// to leave the focus to `active`.
    void begin(const BundleID& app, const std::vector<xcb_window_t>& shown, xcb_window_t active,
               double now);

    /// The app is wanted in front after all, with this window if it has one yet.
    void drop(const BundleID& app, xcb_window_t wanted = XCB_WINDOW_NONE) {
        guarded_.erase(app);
        if (wanted != XCB_WINDOW_NONE) {
            kept_ = wanted;
        }
    }

    /// The window goes from the desk: giving it the focus back would bring it back as well.
    void release(xcb_window_t window) {
        if (kept_ == window) {
            kept_ = XCB_WINDOW_NONE;
        }
    }

    /// Whether anybody is kept from the focus.
    bool isOn(double now);

    /// An app has this window; told again it changes nothing.
    void windowCame(const BundleID& app, xcb_window_t window, double now);

    /// A window has the focus, perhaps still the one that was told last; `app` is "" when it is not
    /// known. Returns who is to get it back.
    std::optional<xcb_window_t> focused(xcb_window_t window, const BundleID& app, double now);

  private:
    struct Guarded {
        double until = 0;
        std::map<xcb_window_t, double> came; ///< when; long ago for one that had its turn
    };

    std::map<BundleID, Guarded> guarded_;
    xcb_window_t last_ = XCB_WINDOW_NONE; ///< had the focus when it was told last
    xcb_window_t kept_ = XCB_WINDOW_NONE; ///< has the focus by the user's wish
};

} // namespace vellory
