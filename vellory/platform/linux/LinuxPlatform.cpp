// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/LinuxPlatform.h"

#include <gio/gio.h>
#include <xcb/xcb.h>

#include "platform/linux/GLibPointers.h"

namespace vellory {

LinuxPlatform::Start::Start(std::optional<std::filesystem::path> onlyEntries)
    : environment_(SessionEnvironment::current()),
      entries_(std::make_shared<DesktopEntries>(
          DesktopEntries::Options{environment_, std::move(onlyEntries)})) {}

LinuxPlatform::Start LinuxPlatform::begin(std::optional<std::filesystem::path> onlyEntries) {
    return Start(std::move(onlyEntries));
}

std::filesystem::path LinuxPlatform::Start::runtimeFolder() const {
    if (const auto folder = environment_.value("XDG_RUNTIME_DIR")) {
        return *folder;
    }
    return environment_.cacheHome();
}

bool LinuxPlatform::Start::hasDisplay() const {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool LinuxPlatform::Start::hasGraphics() const {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", error)) {
        if (entry.path().filename().string().starts_with("renderD")) {
            return true;
        }
    }
    return false;
}

LinuxPlatform::Folders
LinuxPlatform::Start::folders(const std::optional<std::filesystem::path>& support) const {
    if (support) {
        return {environment_.dataHome(), *support / "settings.conf", *support / "cache"};
    }
    return {environment_.dataHome(), environment_.configHome() / "vellory" / "settings.conf",
            environment_.cacheHome() / "vellory"};
}

LinuxPlatform::LinuxPlatform(const Start& start, const Folders& folders, EventLoop& loop,
                             Scheduler& scheduler, const HttpClient& http)
    : environment_(start.environment()), entries_(start.entries()),
      catalogue_(entries_, start.sortLocale()), icons_({.environment = start.environment(),
                                                        .cacheFolder = folders.cache / "icons",
                                                        .theme = std::nullopt}),
      runningApps_({.environment = start.environment()}, entries_, loop, scheduler),
      desktop_(start.environment(), runningApps_, http, scheduler),
      metadata_({.recentlyUsed = start.environment().dataHome() / "recently-used.xbel"}, entries_,
                scheduler),
      windowPlacer_(start.environment(), runningApps_), focusSource_(start.environment()),
      hotKeys_(start.environment(), loop) {}

std::set<BundleID> LinuxPlatform::desktopApps() {
    return {// File managers, which also draw the desktop's icons.
            "caja", "caja-browser", "caja-desktop", "dde-file-manager", "io.elementary.files",
            "nautilus", "nemo", "nemo-desktop", "org.gnome.Nautilus", "org.kde.dolphin", "pcmanfm",
            "pcmanfm-desktop-pref", "pcmanfm-qt", "spacefm", "thunar", "Thunar", "xfdesktop",
            // Shells, panels and docks.
            "budgie-panel", "cairo-dock", "cinnamon", "io.elementary.dock",
            "io.elementary.wingpanel", "latte-dock", "lxpanel", "lxqt-panel", "mate-panel",
            "org.buddiesofbudgie.BudgieDesktop", "org.gnome.Shell", "org.kde.latte-dock",
            "org.kde.plasmashell", "plank", "tint2", "xfce4-panel"};
}

bool LinuxPlatform::prefersDark() const {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (source == nullptr) {
        return true;
    }
    GSettingsSchema* schema =
        g_settings_schema_source_lookup(source, "org.gnome.desktop.interface", TRUE);
    if (schema == nullptr) {
        return true;
    }
    bool dark = true;
    if (g_settings_schema_has_key(schema, "color-scheme") != FALSE) {
        GSettings* settings = g_settings_new_full(schema, nullptr, nullptr);
        gchar* value = g_settings_get_string(settings, "color-scheme");
        dark = std::string_view(value) != "prefer-light";
        g_free(value);
        g_object_unref(settings);
    }
    g_settings_schema_unref(schema);
    return dark;
}

} // namespace vellory
