// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Json.h"

namespace vellory {

struct LayoutItem;

/// Items in reading order.
using LayoutPage = std::vector<LayoutItem>;

/// An app or a folder as another launcher showed it. Stored as an object whose only key names the
/// case, "app" or "folder".
struct LayoutItem {
    struct App {
        BundleID bundleID;
        /// The name the other launcher showed.
        std::string title;

        friend bool operator==(const App&, const App&) = default;
    };

    struct Folder {
        std::string title;
        std::vector<LayoutPage> pages;

        friend bool operator==(const Folder&, const Folder&) = default;
    };

    std::variant<App, Folder> content;

    const App* app() const { return std::get_if<App>(&content); }
    const Folder* folder() const { return std::get_if<Folder>(&content); }

    /// 1 for an app; for a folder the apps on its pages, those of folders within it included.
    std::size_t appCount() const;

    friend bool operator==(const LayoutItem&, const LayoutItem&) = default;
};

/// A grid as pages of items: what importers of other launchers produce, and what a board can be
/// made from. It may list an app twice or name apps that are not installed.
struct Layout {
    std::vector<LayoutPage> pages;

    /// All apps, those in folders of any depth included.
    std::size_t appCount() const;
    /// The folders on all pages.
    std::size_t folderCount() const;

    friend bool operator==(const Layout&, const Layout&) = default;
};

void toJson(json::Value& object, const LayoutItem& item);
void fromJson(const json::Value& object, LayoutItem& item);
void toJson(json::Value& object, const Layout& layout);
void fromJson(const json::Value& object, Layout& layout);

} // namespace vellory
