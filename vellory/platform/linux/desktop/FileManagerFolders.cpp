// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/FileManagerFolders.h"

#include <algorithm>

#include "platform/linux/apps/FileLinks.h"
#include "platform/linux/session/SessionBus.h"

namespace vellory::FileManagerFolders {

namespace {

constexpr int answerMilliseconds = 1'000;
constexpr std::size_t maxFolders = 1'000;
constexpr const char* fileManager = "org.freedesktop.FileManager1";

void add(std::vector<std::string>& folders, GVariant* links) {
    GVariantIter each;
    g_variant_iter_init(&each, links);
    const char* link = nullptr;
    while (folders.size() < maxFolders && g_variant_iter_next(&each, "&s", &link) != FALSE) {
        // Places that are none on this machine (trash:, sftp:) have no path.
        const auto folder = FileLinks::fileOf(link);
        if (folder && std::ranges::find(folders, folder->string()) == folders.end()) {
            folders.push_back(folder->string());
        }
    }
}

} // namespace

std::vector<std::string> open(const SessionEnvironment& environment) {
    const auto bus = sessionBus(environment);
    if (bus == nullptr) {
        return {};
    }
    const glib::Variant answer = glib::own(g_dbus_connection_call_sync(
        bus.get(), fileManager, "/org/freedesktop/FileManager1", "org.freedesktop.DBus.Properties",
        "GetAll", g_variant_new("(s)", fileManager), G_VARIANT_TYPE("(a{sv})"),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, answerMilliseconds, nullptr, nullptr));
    std::vector<std::string> folders;
    if (answer == nullptr) {
        return folders;
    }
    const glib::Variant properties = glib::own(g_variant_get_child_value(answer.get(), 0));
    // By window where it is told so, for the order; the plain list is the older way.
    if (const glib::Variant windows = glib::own(g_variant_lookup_value(
            properties.get(), "OpenWindowsWithLocations", G_VARIANT_TYPE("a{sas}")))) {
        GVariantIter each;
        g_variant_iter_init(&each, windows.get());
        while (const glib::Variant window = glib::own(g_variant_iter_next_value(&each))) {
            add(folders, glib::own(g_variant_get_child_value(window.get(), 1)).get());
        }
    }
    if (const glib::Variant places = glib::own(
            g_variant_lookup_value(properties.get(), "OpenLocations", G_VARIANT_TYPE("as")))) {
        add(folders, places.get());
    }
    return folders;
}

} // namespace vellory::FileManagerFolders
