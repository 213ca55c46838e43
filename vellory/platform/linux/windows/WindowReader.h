// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/windows/WindowGeometry.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory {

/// A window as it stands on the screen.
struct WindowReading {
    WindowGeometry geometry;
    std::string title;        ///< UTF-8
    bool isMaximized = false; ///< in one direction at least
    bool isFullScreen = false;
    bool isShaded = false;
    bool belongsToAnother = false; ///< a dialog of another window
};

/// Reads many windows for the price of one: all questions are asked before the first answer is
/// taken.
class WindowReader {
  public:
    explicit WindowReader(X11Connection& connection);

    /// One for each of `windows`; nothing for those that are gone.
    std::vector<std::optional<WindowReading>> read(const std::vector<xcb_window_t>& windows);

  private:
    struct Asked;
    Asked ask(xcb_window_t window);
    std::optional<WindowReading> take(const Asked& asked);

    X11Connection& connection_;
    xcb_atom_t gtkFrameExtents_;
};

} // namespace vellory
