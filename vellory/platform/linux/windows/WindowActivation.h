// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

class X11Connection;

/// Lets a window of this program take the focus when the user asked for it elsewhere: in another
/// program, a terminal, the desktop's shell. Window managers let only those windows take it that
/// the user meant last. Does nothing without an X server.
class WindowActivation {
  public:
    explicit WindowActivation(const SessionEnvironment& environment);
    WindowActivation(const WindowActivation&) = delete;
    WindowActivation& operator=(const WindowActivation&) = delete;
    ~WindowActivation();

    /// Asks the window manager for the focus as of the user's wish: when the desktop gave `token`
    /// with it, or now. The window must be on the screen.
    void bringForward(std::uint32_t window, const std::string& token);

    /// Says that the wish that came with `token` was fulfilled: the desktop stops showing that
    /// something is coming.
    void end(const std::string& token);

    /// The token of the environment that a start was given.
    static std::string tokenIn(const SessionEnvironment& environment);

  private:
    X11Connection* connection();

    std::optional<std::string> display_;
    std::unique_ptr<X11Connection> connection_; ///< made when it is first needed
};

} // namespace vellory
