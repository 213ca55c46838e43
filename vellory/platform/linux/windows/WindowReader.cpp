// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/WindowReader.h"

#include <algorithm>

#include "platform/linux/GLibPointers.h"

namespace vellory {

namespace {

/// Wider decorations and shadows are a mistake of whoever announces them.
constexpr std::uint32_t widestEdge = 1024;

WindowGeometry::Edges edgesOf(const std::vector<std::uint32_t>& values) {
    if (values.size() < 4) {
        return {};
    }
    const auto edge = [&](std::size_t side) {
        return static_cast<int>(std::min(values[side], widestEdge));
    };
    return {edge(0), edge(1), edge(2), edge(3)};
}

} // namespace

struct WindowReader::Asked {
    xcb_window_t window;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t place;
    xcb_get_property_cookie_t decorations, shadows, states, parent, title, oldTitle;
};

WindowReader::WindowReader(X11Connection& connection)
    : connection_(connection), gtkFrameExtents_(connection.atom("_GTK_FRAME_EXTENTS")) {}

WindowReader::Asked WindowReader::ask(xcb_window_t window) {
    const auto& ewmh = *connection_.ewmh();
    const auto property = [&](xcb_atom_t atom) {
        return connection_.requestProperty(window, atom);
    };
    return {window,
            xcb_get_geometry(connection_.get(), window),
            xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0),
            property(ewmh._NET_FRAME_EXTENTS),
            property(gtkFrameExtents_),
            property(ewmh._NET_WM_STATE),
            property(XCB_ATOM_WM_TRANSIENT_FOR),
            property(ewmh._NET_WM_NAME),
            property(XCB_ATOM_WM_NAME)};
}

std::optional<WindowReading> WindowReader::take(const Asked& asked) {
    const x11::Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection_.get(), asked.geometry, nullptr));
    const x11::Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection_.get(), asked.place, nullptr));
    // Every answer is taken, also when it is not needed: it would wait in memory.
    const auto decorations = connection_.values(asked.decorations);
    const auto shadows = connection_.values(asked.shadows);
    const auto states = connection_.values(asked.states);
    const auto parent = connection_.values(asked.parent);
    std::string title = connection_.text(asked.title);
    const std::string oldTitle = connection_.text(asked.oldTitle);
    if (size == nullptr || place == nullptr || place->same_screen == 0) {
        return std::nullopt;
    }
    if (title.empty() && !oldTitle.empty()) {
        // Latin-1 by definition; what is none after all is mended as far as it goes.
        title =
            glib::text(glib::Chars(g_convert(oldTitle.data(), static_cast<gssize>(oldTitle.size()),
                                             "UTF-8", "ISO-8859-1", nullptr, nullptr, nullptr))
                           .get());
    }
    const auto& ewmh = *connection_.ewmh();
    const auto has = [&](xcb_atom_t state) { return std::ranges::count(states, state) > 0; };
    return WindowReading{
        {place->dst_x, place->dst_y, size->width, size->height, size->border_width,
         edgesOf(decorations), edgesOf(shadows)},
        glib::text(
            glib::Chars(g_utf8_make_valid(title.data(), static_cast<gssize>(title.size()))).get()),
        has(ewmh._NET_WM_STATE_MAXIMIZED_VERT) || has(ewmh._NET_WM_STATE_MAXIMIZED_HORZ),
        has(ewmh._NET_WM_STATE_FULLSCREEN),
        has(ewmh._NET_WM_STATE_SHADED),
        !parent.empty() && parent.front() != XCB_WINDOW_NONE &&
            parent.front() != connection_.root() && parent.front() != asked.window};
}

std::vector<std::optional<WindowReading>>
WindowReader::read(const std::vector<xcb_window_t>& windows) {
    std::vector<Asked> asked;
    asked.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        asked.push_back(ask(window));
    }
    std::vector<std::optional<WindowReading>> out;
    out.reserve(windows.size());
    for (const Asked& answer : asked) {
        out.push_back(take(answer));
    }
    return out;
}

} // namespace vellory
