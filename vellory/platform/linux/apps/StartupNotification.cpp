// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/StartupNotification.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>

#include <unistd.h>

namespace vellory::StartupNotification {

namespace {

/// What receivers accept at most is left open; names and paths stay far below.
constexpr std::size_t maxMessageBytes = 4096;

/// A value as messages hold it: in double quotes, with backslashes before what would end them.
std::string quotedValue(const std::string& value) {
    std::string out = "\"";
    for (const char c : value) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c == '\0' ? ' ' : c;
    }
    return out + '"';
}

/// Sends a text to all that listen at the root window, 20 bytes at a time. The pieces belong
/// together by the window that they name, so each message takes a window of its own.
void broadcast(X11Connection& connection, const std::string& message) {
    const xcb_window_t window = xcb_generate_id(connection.get());
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -100, -100,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t piece{};
    piece.response_type = XCB_CLIENT_MESSAGE;
    piece.format = 8;
    piece.window = window;
    piece.type = connection.atom("_NET_STARTUP_INFO_BEGIN");
    constexpr std::size_t pieceBytes = sizeof piece.data.data8;
    // The text's final NUL is sent too: it ends the message.
    const std::size_t total = std::min(message.size(), maxMessageBytes) + 1;
    for (std::size_t sent = 0; sent < total; sent += pieceBytes) {
        std::memset(piece.data.data8, 0, pieceBytes);
        std::memcpy(piece.data.data8, message.data() + sent,
                    std::min(total - 1 - sent, pieceBytes));
        xcb_send_event(connection.get(), 0, connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&piece));
        piece.type = connection.atom("_NET_STARTUP_INFO");
    }
    xcb_destroy_window(connection.get(), window);
    connection.flush();
}

} // namespace

std::string freshId(xcb_timestamp_t time) {
    static std::atomic<unsigned> count = 0;
    std::array<char, 256> host{};
    gethostname(host.data(), host.size() - 1);
    return "vellory-" + std::to_string(getpid()) + '-' + host.data() + '-' +
           std::to_string(++count) + "_TIME" + std::to_string(time);
}

void begin(X11Connection& connection, const Sequence& sequence) {
    broadcast(connection, "new: ID=" + quotedValue(sequence.id) +
                              " NAME=" + quotedValue(sequence.appName) +
                              " SCREEN=" + std::to_string(connection.screenNumber()) +
                              " TIMESTAMP=" + std::to_string(sequence.time) +
                              " APPLICATION_ID=" + quotedValue(sequence.desktopFile));
}

void end(X11Connection& connection, const std::string& id) {
    broadcast(connection, "remove: ID=" + quotedValue(id));
}

} // namespace vellory::StartupNotification
