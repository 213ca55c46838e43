// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/LauncherBadges.h"

#include <optional>
#include <string_view>

#include "platform/linux/SessionBus.h"

namespace vellory {

namespace {

/// Far more apps than anybody runs; who floods the bus does not fill the memory.
constexpr std::size_t maxBadges = 1'000;
constexpr std::size_t maxIdBytes = 255;

/// The app in "application://org.example.Mail.desktop".
std::optional<BundleID> appOf(std::string_view uri) {
    constexpr std::string_view scheme = "application://";
    constexpr std::string_view suffix = ".desktop";
    if (!uri.starts_with(scheme) || !uri.ends_with(suffix) ||
        uri.size() <= scheme.size() + suffix.size() || uri.size() > maxIdBytes) {
        return std::nullopt;
    }
    return BundleID(uri.substr(scheme.size(), uri.size() - scheme.size() - suffix.size()));
}

} // namespace

LauncherBadges::LauncherBadges(SessionEnvironment environment)
    : environment_(std::move(environment)), context_(g_main_context_new()),
      loop_(g_main_loop_new(context_.get(), FALSE)), thread_([this] { run(); }) {}

LauncherBadges::~LauncherBadges() {
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

void LauncherBadges::run() {
    g_main_context_push_thread_default(context_.get());
    {
        // A connection of its own: closing it here ends all calls into this object.
        const auto bus = sessionBus(environment_);
        guint updates = 0;
        guint owners = 0;
        if (bus != nullptr) {
            updates = g_dbus_connection_signal_subscribe(
                bus.get(), nullptr, "com.canonical.Unity.LauncherEntry", "Update", nullptr, nullptr,
                G_DBUS_SIGNAL_FLAGS_NONE,
                [](GDBusConnection*, const char* sender, const char*, const char*, const char*,
                   GVariant* parameters, gpointer self) {
                    static_cast<LauncherBadges*>(self)->update(sender, parameters);
                },
                this, nullptr);
            owners = g_dbus_connection_signal_subscribe(
                bus.get(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                "/org/freedesktop/DBus", nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                [](GDBusConnection*, const char*, const char*, const char*, const char*,
                   GVariant* parameters, gpointer self) {
                    const char* name = nullptr;
                    const char* before = nullptr;
                    const char* after = nullptr;
                    g_variant_get(parameters, "(&s&s&s)", &name, &before, &after);
                    if (*after == '\0') {
                        static_cast<LauncherBadges*>(self)->forget(name);
                    }
                },
                this, nullptr);
        }
        g_main_loop_run(loop_.get());
        if (bus != nullptr) {
            g_dbus_connection_signal_unsubscribe(bus.get(), updates);
            g_dbus_connection_signal_unsubscribe(bus.get(), owners);
            g_dbus_connection_close_sync(bus.get(), nullptr, nullptr);
        }
    }
    g_main_context_pop_thread_default(context_.get());
}

void LauncherBadges::update(const char* sender, GVariant* parameters) {
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sa{sv})")) == FALSE) {
        return;
    }
    const char* uri = nullptr;
    GVariant* rawProperties = nullptr;
    g_variant_get(parameters, "(&s@a{sv})", &uri, &rawProperties);
    const glib::Variant properties(rawProperties);
    const auto app = appOf(uri);
    if (!app) {
        return;
    }
    const std::lock_guard lock(mutex_);
    if (!badges_.contains(*app) && badges_.size() >= maxBadges) {
        return;
    }
    // An update names only what has changed.
    Badge& badge = badges_[*app];
    badge.sender = glib::text(sender);
    gint64 count = 0;
    gboolean isVisible = FALSE;
    if (g_variant_lookup(properties.get(), "count", "x", &count) != FALSE) {
        badge.count = count;
    }
    if (g_variant_lookup(properties.get(), "count-visible", "b", &isVisible) != FALSE) {
        badge.isVisible = isVisible != FALSE;
    }
}

void LauncherBadges::forget(const std::string& sender) {
    const std::lock_guard lock(mutex_);
    std::erase_if(badges_, [&](const auto& badge) { return badge.second.sender == sender; });
}

std::map<BundleID, std::string> LauncherBadges::texts() const {
    const std::lock_guard lock(mutex_);
    std::map<BundleID, std::string> texts;
    for (const auto& [app, badge] : badges_) {
        if (badge.isVisible && badge.count != 0) {
            texts.emplace(app, std::to_string(badge.count));
        }
    }
    return texts;
}

} // namespace vellory
