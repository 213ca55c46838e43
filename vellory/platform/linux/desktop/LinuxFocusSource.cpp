// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/LinuxFocusSource.h"

#include <algorithm>
#include <array>

#include "platform/linux/session/SessionBus.h"

namespace vellory {

namespace {

/// The services answer within a few; the main thread waits.
constexpr int answerMilliseconds = 200;

constexpr const char* notifications = "org.freedesktop.Notifications";
constexpr const char* notificationsPath = "/org/freedesktop/Notifications";
constexpr const char* usualName = "Do Not Disturb";
constexpr const char* xfceName = "Do not disturb";

/// Desktops that keep the mode in their settings.
struct Setting {
    const char* server; ///< what the desktop's notification service calls itself
    const char* schema;
    const char* key;
    bool valueWhenOn;
};
constexpr auto settings = std::to_array<Setting>(
    {{"gnome-shell", "org.gnome.desktop.notifications", "show-banners", false},
     {"cinnamon", "org.cinnamon.desktop.notifications", "display-notifications", false},
     {"Notification Daemon", "org.mate.NotificationDaemon", "do-not-disturb", true}});

std::optional<bool> valueOf(const Setting& setting) {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    const std::unique_ptr<GSettingsSchema, glib::Release<g_settings_schema_unref>> schema(
        source == nullptr ? nullptr
                          : g_settings_schema_source_lookup(source, setting.schema, TRUE));
    // Asking for a key that the schema lacks would end the process.
    if (schema == nullptr || g_settings_schema_has_key(schema.get(), setting.key) == FALSE) {
        return std::nullopt;
    }
    const glib::Object<GSettings> values(g_settings_new_full(schema.get(), nullptr, nullptr));
    return g_settings_get_boolean(values.get(), setting.key) != FALSE;
}

struct Mode {
    std::string name; ///< as the desktop's own switch is labelled
    bool isOn = false;
};

} // namespace

/// The programs on the session bus that know of the mode.
class LinuxFocusSource::Services {
  public:
    explicit Services(SessionEnvironment environment) : environment_(std::move(environment)) {}

    /// Nothing when the desktop has no such mode or does not tell.
    std::optional<Mode> read();

  private:
    glib::Variant call(const char* service, const char* path, const char* interface,
                       const char* method, GVariant* arguments, const char* answerType);
    std::optional<bool> flag(const char* service, const char* path, const char* interface,
                             const char* property);
    std::optional<bool> xfceSetting();

    SessionEnvironment environment_;
    glib::Object<GDBusConnection> bus_; ///< made when it is first needed
};

LinuxFocusSource::LinuxFocusSource(SessionEnvironment environment)
    : services_(std::make_unique<Services>(std::move(environment))) {}

LinuxFocusSource::~LinuxFocusSource() = default;

bool LinuxFocusSource::canRead() {
    return services_->read().has_value();
}

std::vector<std::string> LinuxFocusSource::modes() {
    const auto mode = services_->read();
    return mode ? std::vector{mode->name} : std::vector<std::string>();
}

std::optional<std::string> LinuxFocusSource::active() {
    const auto mode = services_->read();
    return mode && mode->isOn ? std::optional(mode->name) : std::nullopt;
}

std::optional<Mode> LinuxFocusSource::Services::read() {
    if (bus_ == nullptr || g_dbus_connection_is_closed(bus_.get()) != FALSE) {
        bus_ = sessionBus(environment_);
    }
    if (bus_ == nullptr) {
        return std::nullopt;
    }
    const glib::Variant who = call(notifications, notificationsPath, notifications,
                                   "GetServerInformation", nullptr, "(ssss)");
    std::string server;
    if (who != nullptr) {
        const char* name = nullptr;
        g_variant_get(who.get(), "(&s&s&s&s)", &name, nullptr, nullptr, nullptr);
        server = name;
    }
    const auto named = [](const char* name, std::optional<bool> isOn) {
        return isOn ? std::optional(Mode{name, *isOn}) : std::nullopt;
    };
    if (const auto setting = std::ranges::find(settings, server, &Setting::server);
        setting != settings.end()) {
        const auto value = valueOf(*setting);
        return named(usualName, value ? std::optional(*value == setting->valueWhenOn) : value);
    }
    if (server == "dunst") {
        return named(usualName,
                     flag(notifications, notificationsPath, "org.dunstproject.cmd0", "paused"));
    }
    // Xfce's service is started with the first notification; its setting is there before.
    if (server.empty() || server == "Xfce Notify Daemon") {
        return named(xfceName, xfceSetting());
    }
    return named(usualName, flag(notifications, notificationsPath, notifications, "Inhibited"));
}

glib::Variant LinuxFocusSource::Services::call(const char* service, const char* path,
                                               const char* interface, const char* method,
                                               GVariant* arguments, const char* answerType) {
    return glib::own(g_dbus_connection_call_sync(
        bus_.get(), service, path, interface, method, arguments, G_VARIANT_TYPE(answerType),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, answerMilliseconds, nullptr, nullptr));
}

std::optional<bool> LinuxFocusSource::Services::flag(const char* service, const char* path,
                                                     const char* interface, const char* property) {
    const glib::Variant answer = call(service, path, "org.freedesktop.DBus.Properties", "Get",
                                      g_variant_new("(ss)", interface, property), "(v)");
    if (answer == nullptr) {
        return std::nullopt;
    }
    const glib::Variant boxed = glib::own(g_variant_get_child_value(answer.get(), 0));
    const glib::Variant value = glib::own(g_variant_get_variant(boxed.get()));
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) == FALSE
               ? std::nullopt
               : std::optional(g_variant_get_boolean(value.get()) != FALSE);
}

std::optional<bool> LinuxFocusSource::Services::xfceSetting() {
    // All of the service's settings rather than the one: it is not stored before it is first used.
    const glib::Variant answer =
        call("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", "GetAllProperties",
             g_variant_new("(ss)", "xfce4-notifyd", "/"), "(a{sv})");
    if (answer == nullptr) {
        return std::nullopt;
    }
    const glib::Variant all = glib::own(g_variant_get_child_value(answer.get(), 0));
    gboolean isOn = FALSE;
    g_variant_lookup(all.get(), "/do-not-disturb", "b", &isOn);
    return isOn != FALSE;
}

} // namespace vellory
