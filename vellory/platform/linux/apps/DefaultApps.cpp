// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/DefaultApps.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <gio/gdesktopappinfo.h>

#include "platform/linux/GLibPointers.h"

namespace vellory::DefaultApps {

namespace {

/// What is run by opening it.
constexpr auto programs = std::to_array<const char*>(
    {"application/x-desktop", "application/x-executable", "application/x-pie-executable",
     "application/x-sharedlib", "application/x-ms-dos-executable", "application/x-msdos-program",
     "application/vnd.microsoft.portable-executable", "application/x-msi",
     "application/x-ms-shortcut", "application/vnd.appimage", "application/x-iso9660-appimage",
     "application/java-archive", "application/x-java-archive"});

std::optional<InstalledApp> appOf(const glib::Object<GAppInfo>& info) {
    if (info == nullptr || G_IS_DESKTOP_APP_INFO(info.get()) == FALSE) {
        return std::nullopt;
    }
    std::string id = glib::text(g_app_info_get_id(info.get()));
    const std::string file =
        glib::text(g_desktop_app_info_get_filename(G_DESKTOP_APP_INFO(info.get())));
    if (constexpr std::string_view ending = ".desktop"; id.ends_with(ending)) {
        id.resize(id.size() - ending.size());
    }
    if (id.empty() || file.empty()) {
        return std::nullopt;
    }
    return InstalledApp{id, glib::text(g_app_info_get_name(info.get())), file};
}

} // namespace

std::optional<InstalledApp> forScheme(const std::string& scheme) {
    const glib::Chars lower(g_ascii_strdown(scheme.c_str(), -1));
    return appOf(glib::Object<GAppInfo>(g_app_info_get_default_for_uri_scheme(lower.get())));
}

std::optional<InstalledApp> forFile(const std::filesystem::path& file) {
    const glib::Object<GFile> location(g_file_new_for_path(file.c_str()));
    const glib::Object<GFileInfo> info(g_file_query_info(location.get(),
                                                         G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                         G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    const char* type = info == nullptr ? nullptr : g_file_info_get_content_type(info.get());
    if (type == nullptr || std::ranges::any_of(programs, [&](const char* program) {
            return g_content_type_is_a(type, program) != FALSE;
        })) {
        return std::nullopt;
    }
    return appOf(glib::Object<GAppInfo>(g_app_info_get_default_for_type(type, FALSE)));
}

} // namespace vellory::DefaultApps
