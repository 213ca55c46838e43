// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/WindowPlacer.h"

namespace vellory {

/// Windows on an X server whose window manager keeps the Extended Window Manager Hints.
class LinuxWindowPlacer final : public WindowPlacer {
  public:
    bool isTrusted(bool prompt) override;
    std::vector<std::vector<Window>> windows(const std::vector<RunningApp>& apps) override;
    bool setFrame(WindowID window, const Workspace::Rect& frame) override;
    bool raise(WindowID window) override;
};

} // namespace vellory
