// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "platform/WindowPlacer.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

class LinuxRunningApps;
class X11Connection;

/// Windows on an X server whose window manager keeps the Extended Window Manager Hints. Waits for
/// the server only: what the window manager is asked for has happened some time later.
///
/// The windows of an app are those that task bars show, without those that belong to another window
/// (WM_TRANSIENT_FOR): dialogs come and go, and the windows after them would change their number.
/// Their order is that in which they were first shown, as the window manager keeps it.
class LinuxWindowPlacer final : public WindowPlacer {
  public:
    /// `apps` tells which window is whose; it must outlive this object.
    LinuxWindowPlacer(const SessionEnvironment& environment, LinuxRunningApps& apps);
    ~LinuxWindowPlacer() override;

    /// A Wayland session keeps its windows to itself: those that X programs have there are not all.
    bool isTrusted(bool prompt) override;
    std::vector<std::vector<Window>> windows(const std::vector<RunningApp>& apps) override;
    /// A window that is iconified stays so. One that fills the screen and has the frame already is
    /// left as it is.
    bool setFrame(WindowID window, const Workspace::Rect& frame) override;
    bool raise(WindowID window) override;

  private:
    LinuxRunningApps& apps_;
    bool isWayland_;
    std::unique_ptr<X11Connection> connection_;
};

} // namespace vellory
