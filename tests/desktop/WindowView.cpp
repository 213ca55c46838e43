// SPDX-License-Identifier: Apache-2.0
#include "WindowView.h"

#include <algorithm>
#include <array>

#include <xcb/xcb_icccm.h>

namespace vellory::test {

WindowView::WindowView(const DesktopSession& session, MainLoop& loop)
    : loop_(loop), connection_(X11Connection::open(session.environment().value("DISPLAY"))) {}

std::vector<std::uint32_t> WindowView::values(xcb_window_t window, const std::string& property) {
    return connection_->values(connection_->requestProperty(window, connection_->atom(property)));
}

std::vector<xcb_window_t> WindowView::listed() {
    return values(connection_->root(), "_NET_CLIENT_LIST");
}

std::vector<xcb_window_t> WindowView::stacked() {
    return values(connection_->root(), "_NET_CLIENT_LIST_STACKING");
}

xcb_window_t WindowView::active() {
    const auto active = values(connection_->root(), "_NET_ACTIVE_WINDOW");
    return active.empty() ? xcb_window_t{XCB_NONE} : active.front();
}

Workspace::Rect WindowView::outerFrame(xcb_window_t window) {
    xcb_connection_t* connection = connection_->get();
    while (true) {
        const x11::Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
        if (tree == nullptr) {
            return {};
        }
        if (tree->parent == connection_->root()) {
            break;
        }
        window = tree->parent;
    }
    const x11::Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    return geometry == nullptr
               ? Workspace::Rect{}
               : Workspace::Rect{static_cast<double>(geometry->x), static_cast<double>(geometry->y),
                                 geometry->width + 2.0 * geometry->border_width,
                                 geometry->height + 2.0 * geometry->border_width};
}

std::vector<std::string> WindowView::states(xcb_window_t window) {
    const auto set = values(window, "_NET_WM_STATE");
    std::vector<std::string> out;
    for (const char* name : {"_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_MAXIMIZED_HORZ",
                             "_NET_WM_STATE_MAXIMIZED_VERT", "_NET_WM_STATE_SHADED"}) {
        if (std::ranges::count(set, connection_->atom(name)) > 0) {
            out.emplace_back(name);
        }
    }
    const auto icccm = values(window, "WM_STATE");
    if (!icccm.empty() && icccm.front() == XCB_ICCCM_WM_STATE_ICONIC) {
        out.emplace_back("iconic");
    }
    return out;
}

bool WindowView::setStates(xcb_window_t window, const std::vector<std::string>& wanted, bool isOn) {
    connection_->sendToWindowManager(
        window, connection_->ewmh()->_NET_WM_STATE,
        {isOn ? XCB_EWMH_WM_STATE_ADD : XCB_EWMH_WM_STATE_REMOVE, connection_->atom(wanted.front()),
         wanted.size() < 2 ? xcb_atom_t{XCB_ATOM_NONE} : connection_->atom(wanted.back()),
         XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, 0});
    return waitFor([&] {
        const auto now = states(window);
        return std::ranges::all_of(wanted, [&](const std::string& state) {
            return (std::ranges::count(now, state) > 0) == isOn;
        });
    });
}

bool WindowView::iconify(xcb_window_t window) {
    connection_->sendToWindowManager(window, connection_->atom("WM_CHANGE_STATE"),
                                     {XCB_ICCCM_WM_STATE_ICONIC, 0, 0, 0, 0});
    return waitFor([&] { return std::ranges::count(states(window), "iconic") > 0; });
}

bool WindowView::waitFor(const std::function<bool()>& done) {
    connection_->flush();
    return loop_.runUntil(done) && settle();
}

bool WindowView::settle() {
    // It takes what it is asked in order, so its answer to this comes after all the rest.
    const auto& ewmh = *connection_->ewmh();
    // Twice: what it does makes events for itself, which it has seen with the second answer.
    for (int round = 0; round < 2; ++round) {
        xcb_delete_property(connection_->get(), connection_->ownWindow(), ewmh._NET_FRAME_EXTENTS);
        connection_->sendToWindowManager(connection_->ownWindow(), ewmh._NET_REQUEST_FRAME_EXTENTS,
                                         {});
        if (!loop_.runUntil(
                [&] { return !values(connection_->ownWindow(), "_NET_FRAME_EXTENTS").empty(); })) {
            return false;
        }
    }
    connection_->takeEvents();
    return true;
}

} // namespace vellory::test
