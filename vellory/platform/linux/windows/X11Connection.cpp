// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/X11Connection.h"

#include <array>
#include <cstring>

namespace vellory {

namespace {

constexpr std::uint32_t maxPropertyWords = 16 * 1024;
constexpr std::uint8_t eventTypeMask = 0x7F; // The high bit says that a client sent the event.

} // namespace

std::unique_ptr<X11Connection> X11Connection::open(const std::optional<std::string>& display) {
    if (!display) {
        return nullptr;
    }
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(display->c_str(), &screenNumber);
    // Not make_unique: the constructor is private.
    std::unique_ptr<X11Connection> opened(new X11Connection(connection, screenNumber));
    return opened->isAlive() && opened->screen_ != nullptr && opened->hasEwmh_ ? std::move(opened)
                                                                               : nullptr;
}

X11Connection::X11Connection(xcb_connection_t* connection, int screenNumber)
    : connection_(connection), screenNumber_(screenNumber) {
    if (!isAlive()) {
        return;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int skipped = 0; screens.rem > 0 && skipped < screenNumber_; ++skipped) {
        xcb_screen_next(&screens);
    }
    if (screens.rem == 0) {
        return;
    }
    screen_ = screens.data;
    hasEwmh_ =
        xcb_ewmh_init_atoms_replies(&ewmh_, xcb_ewmh_init_atoms(connection_, &ewmh_), nullptr) != 0;
    if (!hasEwmh_) {
        return;
    }
    ownWindow_ = xcb_generate_id(connection_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, ownWindow_, root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

X11Connection::~X11Connection() {
    if (hasEwmh_) {
        xcb_ewmh_connection_wipe(&ewmh_);
    }
    xcb_disconnect(connection_);
}

xcb_atom_t X11Connection::atom(std::string_view name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) {
        return known->second;
    }
    const auto request =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const x11::Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection_, request, nullptr));
    const xcb_atom_t atom = reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
    if (atom != XCB_ATOM_NONE) {
        atoms_.emplace(name, atom);
    }
    return atom;
}

xcb_timestamp_t X11Connection::serverTime() {
    // Appending nothing to a property still makes an event with the time, and the reply to a
    // question asked afterwards cannot overtake it.
    xcb_change_property(connection_, XCB_PROP_MODE_APPEND, ownWindow_, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, 0, nullptr);
    const x11::Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    queueArrived();
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    std::erase_if(events_, [&](const x11::Event& event) {
        if ((event->response_type & eventTypeMask) != XCB_PROPERTY_NOTIFY) {
            return false;
        }
        const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
        if (change->window != ownWindow_) {
            return false;
        }
        time = change->time;
        return true;
    });
    return time;
}

std::optional<xcb_window_t> X11Connection::windowManager() {
    xcb_window_t claimed = XCB_WINDOW_NONE;
    xcb_window_t confirmed = XCB_WINDOW_NONE;
    // The property on the root window may be left over from a window manager that is gone; its
    // window then no longer exists or belongs to somebody else.
    const bool there =
        xcb_ewmh_get_supporting_wm_check_reply(
            &ewmh_, xcb_ewmh_get_supporting_wm_check(&ewmh_, root()), &claimed, nullptr) != 0 &&
        xcb_ewmh_get_supporting_wm_check_reply(
            &ewmh_, xcb_ewmh_get_supporting_wm_check(&ewmh_, claimed), &confirmed, nullptr) != 0;
    return there && claimed == confirmed ? std::optional(claimed) : std::nullopt;
}

void X11Connection::queueArrived() {
    while (x11::Event event{xcb_poll_for_queued_event(connection_)}) {
        events_.push_back(std::move(event));
    }
}

std::vector<x11::Event> X11Connection::takeEvents() {
    while (x11::Event event{xcb_poll_for_event(connection_)}) {
        events_.push_back(std::move(event));
    }
    std::vector<x11::Event> taken(std::make_move_iterator(events_.begin()),
                                  std::make_move_iterator(events_.end()));
    events_.clear();
    return taken;
}

bool X11Connection::hasUnseenEvents() {
    queueArrived();
    return !events_.empty();
}

void X11Connection::sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                                        const std::array<std::uint32_t, 5>& values) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::memcpy(message.data.data32, values.data(), sizeof message.data.data32);
    xcb_send_event(connection_, 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

xcb_get_property_cookie_t X11Connection::requestProperty(xcb_window_t window,
                                                         xcb_atom_t property) const {
    return xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                            maxPropertyWords);
}

std::vector<std::string> X11Connection::texts(xcb_get_property_cookie_t request) const {
    const x11::Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_, request, nullptr));
    std::vector<std::string> out;
    if (reply == nullptr || reply->format != 8) {
        return out;
    }
    std::string_view rest(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        out.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return out;
}

std::string X11Connection::text(xcb_get_property_cookie_t request) const {
    auto all = texts(request);
    return all.empty() ? std::string() : std::move(all.front());
}

std::vector<std::uint32_t> X11Connection::values(xcb_get_property_cookie_t request) const {
    return valuesOfLiving(request).value_or(std::vector<std::uint32_t>());
}

std::optional<std::vector<std::uint32_t>>
X11Connection::valuesOfLiving(xcb_get_property_cookie_t request) const {
    const x11::Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_, request, nullptr));
    if (reply == nullptr) {
        return std::nullopt;
    }
    if (reply->format != 32) {
        return std::vector<std::uint32_t>();
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return std::vector(first, first + xcb_get_property_value_length(reply.get()) / 4);
}

} // namespace vellory
