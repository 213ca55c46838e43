// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/linux/GLibPointers.h"
#include "platform/linux/session/SessionEnvironment.h"

namespace vellory {

/// A connection of one's own to the session bus; null where there is none (GLib alone would start
/// one). May block while it connects: not for the main thread.
inline glib::Object<GDBusConnection> sessionBus(const SessionEnvironment& environment) {
    const auto address = environment.busAddress();
    return glib::Object<GDBusConnection>(
        !address
            ? nullptr
            : g_dbus_connection_new_for_address_sync(
                  address->c_str(),
                  static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                    G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
                  nullptr, nullptr, nullptr));
}

/// GIO uses a connection that the whole process shares, and that ends the process when the bus goes
/// away. Called before GIO makes it, this takes that habit from it; hold what it returns meanwhile.
inline glib::Object<GDBusConnection> tamedSharedBus(const SessionEnvironment& environment) {
    glib::Object<GDBusConnection> bus(
        environment.busAddress() ? g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr) : nullptr);
    if (bus != nullptr) {
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
    return bus;
}

} // namespace vellory
