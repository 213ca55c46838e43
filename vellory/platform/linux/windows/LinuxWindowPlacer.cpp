// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/LinuxWindowPlacer.h"

#include <algorithm>
#include <map>
#include <set>

#include <xcb/xcb_icccm.h>

#include "platform/linux/apps/LinuxRunningApps.h"
#include "platform/linux/windows/AppWindows.h"
#include "platform/linux/windows/WindowReader.h"

namespace vellory {

namespace {

// The flags of _NET_MOVERESIZE_WINDOW's first value: its lowest byte is the gravity.
constexpr std::uint32_t allFourGiven = 0xFU << 8;
constexpr std::uint32_t fromPager = XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER << 12;

void moveAndResize(X11Connection& connection, xcb_window_t window,
                   const WindowGeometry::Request& request) {
    connection.sendToWindowManager(
        window, connection.ewmh()->_NET_MOVERESIZE_WINDOW,
        {XCB_GRAVITY_NORTH_WEST | allFourGiven | fromPager, static_cast<std::uint32_t>(request.x),
         static_cast<std::uint32_t>(request.y), request.width, request.height});
}

/// Asks that the window give up the states in which its frame is not its own.
void restore(X11Connection& connection, xcb_window_t window, const WindowReading& reading) {
    const auto& ewmh = *connection.ewmh();
    const auto remove = [&](xcb_atom_t first, xcb_atom_t second) {
        connection.sendToWindowManager(
            window, ewmh._NET_WM_STATE,
            {XCB_EWMH_WM_STATE_REMOVE, first, second, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, 0});
    };
    if (reading.isFullScreen) {
        remove(ewmh._NET_WM_STATE_FULLSCREEN, XCB_ATOM_NONE);
    }
    if (reading.isMaximized) {
        remove(ewmh._NET_WM_STATE_MAXIMIZED_VERT, ewmh._NET_WM_STATE_MAXIMIZED_HORZ);
    }
    if (reading.isShaded) {
        remove(ewmh._NET_WM_STATE_SHADED, XCB_ATOM_NONE);
    }
}

} // namespace

LinuxWindowPlacer::LinuxWindowPlacer(const SessionEnvironment& environment, LinuxRunningApps& apps)
    : apps_(apps), isWayland_(environment.value("WAYLAND_DISPLAY").has_value()),
      connection_(X11Connection::open(environment.value("DISPLAY"))) {}

LinuxWindowPlacer::~LinuxWindowPlacer() = default;

bool LinuxWindowPlacer::isTrusted(bool /*prompt*/) {
    if (isWayland_ || connection_ == nullptr || !connection_->isAlive()) {
        return false;
    }
    connection_->takeEvents(); // Errors of windows that went away; nobody else looks at them.
    return connection_->windowManager().has_value();
}

std::vector<std::vector<WindowPlacer::Window>>
LinuxWindowPlacer::windows(const std::vector<RunningApp>& apps) {
    std::vector<std::vector<Window>> out(apps.size());
    if (!isTrusted(false)) {
        return out;
    }
    std::set<BundleID> wanted;
    for (const RunningApp& app : apps) {
        wanted.insert(app.bundleID);
    }
    std::vector<AppWindow> known = apps_.windows();
    std::erase_if(known, [&](const AppWindow& window) { return !wanted.contains(window.app); });
    std::vector<xcb_window_t> identifiers;
    std::ranges::transform(known, std::back_inserter(identifiers), &AppWindow::window);
    const auto readings = WindowReader(*connection_).read(identifiers);

    std::map<BundleID, std::vector<Window>> byApp;
    for (std::size_t i = 0; i < known.size(); ++i) {
        const auto& reading = readings[i];
        // One that went away meanwhile is not there any more: those after it have moved up.
        if (reading && !reading->belongsToAnother) {
            byApp[known[i].app].push_back(
                {known[i].window, reading->geometry.frame(), reading->title});
        }
    }
    for (std::size_t i = 0; i < apps.size(); ++i) {
        if (const auto found = byApp.find(apps[i].bundleID); found != byApp.end()) {
            out[i] = found->second;
        }
    }
    return out;
}

bool LinuxWindowPlacer::setFrame(WindowID window, const Workspace::Rect& frame) {
    if (!isTrusted(false)) {
        return false;
    }
    const auto id = static_cast<xcb_window_t>(window);
    const auto reading = WindowReader(*connection_).read({id}).front();
    const auto request = reading ? reading->geometry.requestFor(frame) : std::nullopt;
    if (!request) {
        return false;
    }
    const bool fillsScreen = reading->isFullScreen || reading->isMaximized;
    if (fillsScreen && !reading->isShaded && reading->geometry.frame() == frame) {
        return true;
    }
    restore(*connection_, id, *reading);
    // Also when the window is not restored yet: it is then near enough at once. But what is around
    // it changes with its state, so the frame is exact only with what is read next time.
    moveAndResize(*connection_, id, *request);
    connection_->flush();
    return !fillsScreen && !reading->isShaded;
}

bool LinuxWindowPlacer::raise(WindowID window) {
    const auto id = static_cast<xcb_window_t>(window);
    if (!isTrusted(false) || !WindowReader(*connection_).read({id}).front()) {
        return false;
    }
    // Window managers take this from anybody, and leave the focus where it is.
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_->get(), id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    connection_->flush();
    return true;
}

} // namespace vellory
