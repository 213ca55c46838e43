// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "DesktopSession.h"
#include "platform/linux/GLibPointers.h"

namespace vellory::test {

/// Owns a name on the session's bus, answers every call with nothing or what it was told to, and
/// remembers what was asked.
class FakeService {
  public:
    FakeService(const DesktopSession& session, const std::string& name)
        : bus_(g_dbus_connection_new_for_address_sync(
              session.environment().busAddress()->c_str(),
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr)) {
        g_dbus_connection_add_filter(bus_.get(), &FakeService::hear, this, nullptr);
        const glib::Variant owned = glib::own(g_dbus_connection_call_sync(
            bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", name.c_str(), 0), nullptr, G_DBUS_CALL_FLAGS_NONE,
            -1, nullptr, nullptr));
        if (owned == nullptr) {
            throw std::runtime_error(name + " cannot be owned");
        }
    }
    FakeService(const FakeService&) = delete;
    FakeService& operator=(const FakeService&) = delete;
    ~FakeService() { g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr); }

    /// "<path> <interface>.<method> <arguments>" of each call. Any thread.
    std::vector<std::string> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }

    /// Answers calls of `method` with the values that `text` spells, as GVariant prints them.
    void answer(const std::string& method, const std::string& text) {
        const std::lock_guard lock(mutex_);
        answers_[method] = text;
    }

    /// Sends a signal to everybody on the bus.
    void emit(const char* path, const char* interface, const char* signal, GVariant* arguments) {
        g_dbus_connection_emit_signal(bus_.get(), nullptr, path, interface, signal, arguments,
                                      nullptr);
        g_dbus_connection_flush_sync(bus_.get(), nullptr, nullptr);
    }

  private:
    static GDBusMessage* hear(GDBusConnection* bus, GDBusMessage* message, gboolean isIncoming,
                              gpointer self) {
        if (isIncoming == FALSE ||
            g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
            return message;
        }
        auto& service = *static_cast<FakeService*>(self);
        GVariant* body = g_dbus_message_get_body(message);
        {
            const std::lock_guard lock(service.mutex_);
            service.calls_.push_back(
                std::string(g_dbus_message_get_path(message)) + ' ' +
                g_dbus_message_get_interface(message) + '.' + g_dbus_message_get_member(message) +
                ' ' +
                (body == nullptr ? std::string()
                                 : glib::text(glib::Chars(g_variant_print(body, FALSE)).get())));
        }
        const glib::Object<GDBusMessage> reply(g_dbus_message_new_method_reply(message));
        {
            const std::lock_guard lock(service.mutex_);
            const auto told = service.answers_.find(g_dbus_message_get_member(message));
            if (told != service.answers_.end()) {
                g_dbus_message_set_body(reply.get(), g_variant_new_parsed(told->second.c_str()));
            }
        }
        g_dbus_connection_send_message(bus, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
        g_object_unref(message);
        return nullptr;
    }

    glib::Object<GDBusConnection> bus_;
    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
    std::map<std::string, std::string> answers_; ///< by method
};

} // namespace vellory::test
