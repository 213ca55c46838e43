// SPDX-License-Identifier: Apache-2.0
#include "Board/Layout.h"

#include <algorithm>
#include <ranges>

namespace vellory {

namespace {

std::size_t appsOn(const std::vector<LayoutPage>& pages) {
    std::size_t count = 0;
    for (const LayoutItem& item : pages | std::views::join) {
        count += item.appCount();
    }
    return count;
}

} // namespace

std::size_t LayoutItem::appCount() const {
    return app() != nullptr ? 1 : appsOn(folder()->pages);
}

std::size_t Layout::appCount() const {
    return appsOn(pages);
}

std::size_t Layout::folderCount() const {
    const auto items = pages | std::views::join;
    return static_cast<std::size_t>(
        std::ranges::count_if(items, [](const auto& item) { return item.folder() != nullptr; }));
}

void toJson(json::Value& object, const LayoutItem& item) {
    if (const auto* folder = item.folder()) {
        auto& payload = object["folder"];
        json::write(payload, "title", folder->title);
        json::write(payload, "pages", folder->pages);
    } else {
        auto& payload = object["app"];
        json::write(payload, "bundleID", item.app()->bundleID);
        json::write(payload, "title", item.app()->title);
    }
}

// Folders in folders are read by recursion: `json::maxDepth` bounds it.
void fromJson(const json::Value& object, LayoutItem& item) {
    const auto [name, payload] = json::onlyCase(object);
    if (name == "app") {
        auto& app = item.content.emplace<LayoutItem::App>();
        json::require(payload, "bundleID", app.bundleID);
        json::require(payload, "title", app.title);
    } else if (name == "folder") {
        auto& folder = item.content.emplace<LayoutItem::Folder>();
        json::require(payload, "title", folder.title);
        json::require(payload, "pages", folder.pages);
    } else {
        throw json::DecodingError("unknown kind of layout item");
    }
}

void toJson(json::Value& object, const Layout& layout) {
    json::write(object, "pages", layout.pages);
}

void fromJson(const json::Value& object, Layout& layout) {
    json::require(object, "pages", layout.pages);
}

} // namespace vellory
