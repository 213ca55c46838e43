// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "DesktopSession.h"
#include "MainLoop.h"
#include "Workspaces/Workspace.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory::test {

/// The windows of a session as somebody beside the launcher sees them.
class WindowView {
  public:
    WindowView(const DesktopSession& session, MainLoop& loop);

    /// The window manager's list, in its order.
    std::vector<xcb_window_t> listed();
    /// The same from the bottom to the top of the stack.
    std::vector<xcb_window_t> stacked();
    xcb_window_t active();

    /// What the window manager drew around the window and the window itself: the outermost window
    /// that holds it, whatever anybody says of its extents.
    Workspace::Rect outerFrame(xcb_window_t window);
    /// The names of its states that change its frame, and "iconic".
    std::vector<std::string> states(xcb_window_t window);

    /// Asks the window manager to add or remove at most two states such as "_NET_WM_STATE_SHADED",
    /// and waits until it has.
    bool setStates(xcb_window_t window, const std::vector<std::string>& states, bool isOn);
    bool iconify(xcb_window_t window);

    /// Waits until the window manager has done all that the server has already received.
    bool settle();

  private:
    bool waitFor(const std::function<bool()>& done);
    std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);

    MainLoop& loop_;
    std::unique_ptr<X11Connection> connection_;
};

} // namespace vellory::test
