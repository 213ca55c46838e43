// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/LauncherBadges.h"

#include <optional>
#include <string_view>

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

LauncherBadges::LauncherBadges(const SessionEnvironment& environment)
    : listener_(environment,
                {{"", "", "com.canonical.Unity.LauncherEntry", "Update",
                  [this](const char* sender, GVariant* parameters) { update(sender, parameters); }},
                 {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                  "NameOwnerChanged",
                  [this](const char*, GVariant* parameters) { ownerChanged(parameters); }}}) {}

void LauncherBadges::ownerChanged(GVariant* parameters) {
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    g_variant_get(parameters, "(&s&s&s)", &name, &before, &after);
    if (*after == '\0') {
        forget(name);
    }
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
