// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Workspaces/Workspace.h"
#include "platform/RunningApps.h"

namespace vellory {

/// Reads and sets the frames of other apps' windows. A frame is the window's outer edge, its
/// decorations included and shadows left out, in the space of `Workspace::Rect`. Main thread; no
/// call waits for the app that owns a window, so one that hangs holds up no other.
class WindowPlacer {
  public:
    /// Means one window as long as it lives.
    using WindowID = std::uint64_t;

    struct Window {
        WindowID id = 0;
        /// Nothing when it cannot be read.
        std::optional<Workspace::Rect> frame;
        std::string title;
    };

    virtual ~WindowPlacer() = default;

    /// Whether windows can be read and moved at all: the user allowed it, a window manager answers.
    /// With `prompt` the user is asked to allow it, where the platform asks.
    virtual bool isTrusted(bool prompt) = 0;

    /// The windows of each of `apps`, in its order, and those of one app in the order in which they
    /// were made; an app that does not run has none. All are read together: the cost is that of a
    /// few questions, however many windows there are.
    virtual std::vector<std::vector<Window>> windows(const std::vector<RunningApp>& apps) = 0;

    /// Gives a window that frame; one that fills the screen stops doing so first. False when that
    /// could not be done, or not wholly yet: asked again half a second later it goes on. A frame
    /// that is not finite, or has no size, is refused.
    virtual bool setFrame(WindowID window, const Workspace::Rect& frame) = 0;

    /// Puts the window on top of the others. False when it is gone.
    virtual bool raise(WindowID window) = 0;
};

} // namespace vellory
