// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

namespace vellory {

namespace x11 {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
/// What xcb hands out: replies, events, errors.
template <class T>
using Reply = std::unique_ptr<T, Free>;
using Event = Reply<xcb_generic_event_t>;

} // namespace x11

/// A connection to an X server, with the atoms and messages of its window manager. It ends quietly:
/// once the server is gone every question has an empty answer. One thread at a time.
class X11Connection {
  public:
    /// Nothing when there is no such server or it lets nobody in.
    static std::unique_ptr<X11Connection> open(const std::optional<std::string>& display);
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;
    ~X11Connection();

    bool isAlive() const { return xcb_connection_has_error(connection_) == 0; }
    xcb_connection_t* get() const { return connection_; }
    xcb_ewmh_connection_t* ewmh() { return &ewmh_; }
    int screenNumber() const { return screenNumber_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    /// A window of our own that is never seen; it gets property events.
    xcb_window_t ownWindow() const { return ownWindow_; }
    int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }
    void flush() { xcb_flush(connection_); }

    xcb_atom_t atom(std::string_view name);

    /// The server's clock now, in milliseconds: what window managers compare requests by. Costs a
    /// round trip.
    xcb_timestamp_t serverTime();

    /// The window by which the running window manager shows that it is there; nothing without one.
    std::optional<xcb_window_t> windowManager();

    /// All events that have arrived; waits for none.
    std::vector<x11::Event> takeEvents();
    /// Whether events wait in memory, where watching the descriptor does not show them: waiting for
    /// a reply also takes in the events before it.
    bool hasUnseenEvents();

    /// Sends five values to the root window about `window`, as window managers expect requests.
    void sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                             const std::array<std::uint32_t, 5>& values);

    /// Asks for a property of at most 64 KB; ask for many before taking the first answer.
    xcb_get_property_cookie_t requestProperty(xcb_window_t window, xcb_atom_t property) const;
    // The answers, empty when there is no such property or it is of another kind: the first or all
    // of the texts that NULs end, or 32-bit values.
    std::string text(xcb_get_property_cookie_t request) const;
    std::vector<std::string> texts(xcb_get_property_cookie_t request) const;
    std::vector<std::uint32_t> values(xcb_get_property_cookie_t request) const;
    /// As `values`, but nothing when the window is gone.
    std::optional<std::vector<std::uint32_t>>
    valuesOfLiving(xcb_get_property_cookie_t request) const;

  private:
    X11Connection(xcb_connection_t* connection, int screenNumber);
    void queueArrived();

    xcb_connection_t* connection_;
    int screenNumber_;
    const xcb_screen_t* screen_ = nullptr;
    xcb_ewmh_connection_t ewmh_{};
    bool hasEwmh_ = false;
    xcb_window_t ownWindow_ = XCB_WINDOW_NONE;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::deque<x11::Event> events_;
};

} // namespace vellory
