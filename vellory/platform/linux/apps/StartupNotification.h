// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/linux/windows/X11Connection.h"

/// The launcher's side of the freedesktop Startup Notification protocol: what makes desktops show
/// that an app is coming and let its first window take the focus.
namespace vellory::StartupNotification {

struct Sequence {
    std::string id;
    std::string appName;
    std::string desktopFile;
    xcb_timestamp_t time = 0;
};

/// An id for one start, unlike any other on this server; ends in the time of the user's wish as
/// window managers read it.
std::string freshId(xcb_timestamp_t time);

/// Announces a start to everybody on the screen.
void begin(X11Connection& connection, const Sequence& sequence);

/// Says that the start is over, be it that the window is there or that it failed.
void end(X11Connection& connection, const std::string& id);

} // namespace vellory::StartupNotification
