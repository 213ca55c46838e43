// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "Workspaces/Workspace.h"

namespace vellory {

/// How an X window lies within the frame that people see. All in the server's pixels.
struct WindowGeometry {
    /// Widths at the four sides.
    struct Edges {
        int left = 0;
        int right = 0;
        int top = 0;
        int bottom = 0;

        friend bool operator==(const Edges&, const Edges&) = default;
    };

    /// What a window manager is asked for: where the outer corner goes of all that belongs to the
    /// window (North-West gravity), and how large the window inside becomes.
    struct Request {
        std::int32_t x = 0;
        std::int32_t y = 0;
        std::uint32_t width = 1;
        std::uint32_t height = 1;

        friend bool operator==(const Request&, const Request&) = default;
    };

    // The window without its border, from the root window's corner.
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int border = 0;    ///< the X border: window managers take it away
    Edges decorations; ///< what the window manager adds around (_NET_FRAME_EXTENTS)
    Edges shadows;     ///< what the app draws in it and is not to be seen (_GTK_FRAME_EXTENTS)

    /// The visible outer edge.
    Workspace::Rect frame() const;

    /// What brings the outer edge to `frame`; of a frame that X11 cannot carry the nearest that it
    /// can. Nothing for one that is not finite or has no size.
    std::optional<Request> requestFor(const Workspace::Rect& frame) const;
};

} // namespace vellory
