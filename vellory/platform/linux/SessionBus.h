// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/linux/GLibPointers.h"
#include "platform/linux/SessionEnvironment.h"

namespace vellory {

/// The session bus, without GLib's habit of ending the program when the bus goes away; null where
/// there is none (GLib alone would start one). May block while it connects: not for the main
/// thread.
inline glib::Object<GDBusConnection> sessionBus(const SessionEnvironment& environment) {
    if (!environment.busAddress()) {
        return nullptr;
    }
    glib::Object<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus != nullptr) {
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    }
    return bus;
}

} // namespace vellory
