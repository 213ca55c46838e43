// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/windows/WindowActivation.h"

#include <charconv>
#include <string_view>

#include "platform/linux/apps/StartupNotification.h"
#include "platform/linux/windows/X11Connection.h"

namespace vellory {

namespace {

/// The server's time at which the user asked for what the token stands for; 0 when it does not say.
xcb_timestamp_t timeOf(std::string_view token) {
    constexpr std::string_view mark = "_TIME";
    const auto at = token.rfind(mark);
    xcb_timestamp_t time = 0;
    if (at != std::string_view::npos) {
        const std::string_view digits = token.substr(at + mark.size());
        std::from_chars(digits.data(), digits.data() + digits.size(), time);
    }
    return time;
}

} // namespace

WindowActivation::WindowActivation(const SessionEnvironment& environment)
    : display_(environment.value("DISPLAY")) {}

WindowActivation::~WindowActivation() = default;

X11Connection* WindowActivation::connection() {
    if (connection_ == nullptr || !connection_->isAlive()) {
        connection_ = X11Connection::open(display_);
    }
    return connection_.get();
}

void WindowActivation::bringForward(std::uint32_t window, const std::string& token) {
    X11Connection* x11 = connection();
    if (x11 == nullptr) {
        return;
    }
    xcb_timestamp_t time = timeOf(token);
    if (time == 0) {
        time = x11->serverTime();
    }
    xcb_change_property(x11->get(), XCB_PROP_MODE_REPLACE, window, x11->atom("_NET_WM_USER_TIME"),
                        XCB_ATOM_CARDINAL, 32, 1, &time);
    constexpr std::uint32_t fromApp = 1;
    x11->sendToWindowManager(window, x11->ewmh()->_NET_ACTIVE_WINDOW, {fromApp, time, 0, 0, 0});
    x11->flush();
    x11->takeEvents(); // Nobody looks at them, and they would gather.
    end(token);
}

void WindowActivation::end(const std::string& token) {
    if (X11Connection* x11 = token.empty() ? nullptr : connection()) {
        StartupNotification::end(*x11, token);
    }
}

std::string WindowActivation::tokenIn(const SessionEnvironment& environment) {
    if (auto token = environment.value("XDG_ACTIVATION_TOKEN")) {
        return *token;
    }
    return environment.value("DESKTOP_STARTUP_ID").value_or("");
}

} // namespace vellory
