// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/BusListener.h"

#include <utility>

#include "platform/linux/session/SessionBus.h"

namespace vellory {

BusListener::BusListener(SessionEnvironment environment, std::vector<Signal> signals,
                         std::function<void(GDBusConnection*)> begun)
    : environment_(std::move(environment)), signals_(std::move(signals)), begun_(std::move(begun)),
      context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE)),
      thread_([this] { run(); }) {}

BusListener::~BusListener() {
    // As a task of the loop: quitting before the thread has come to run it would be lost.
    GSource* quit = g_idle_source_new();
    g_source_set_callback(
        quit,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_.get(), nullptr);
    g_source_attach(quit, context_.get());
    g_source_unref(quit);
    thread_.join();
}

void BusListener::run() {
    const auto textOrNull = [](const std::string& text) {
        return text.empty() ? nullptr : text.c_str();
    };
    g_main_context_push_thread_default(context_.get());
    {
        // A connection of its own: closing it here ends all calls into this object.
        const auto bus = sessionBus(environment_);
        std::vector<guint> subscriptions;
        for (Signal& signal : signals_) {
            if (bus == nullptr) {
                break;
            }
            subscriptions.push_back(g_dbus_connection_signal_subscribe(
                bus.get(), textOrNull(signal.sender), signal.interface.c_str(),
                signal.member.c_str(), textOrNull(signal.path), nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                [](GDBusConnection*, const char* sender, const char*, const char*, const char*,
                   GVariant* arguments,
                   gpointer heard) { static_cast<Signal*>(heard)->heard(sender, arguments); },
                &signal, nullptr));
        }
        if (bus != nullptr && begun_) {
            begun_(bus.get());
        }
        g_main_loop_run(loop_.get());
        for (const guint subscription : subscriptions) {
            g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
        }
        if (bus != nullptr) {
            g_dbus_connection_close_sync(bus.get(), nullptr, nullptr);
        }
    }
    g_main_context_pop_thread_default(context_.get());
}

} // namespace vellory
