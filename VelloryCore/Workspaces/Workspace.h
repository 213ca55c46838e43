// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "Board/InstalledApp.h"
#include "Support/Json.h"
#include "Support/Uuid.h"

namespace vellory {

/// A named set of apps, files and links that open together, with the places of their windows, what
/// happens to other apps meanwhile, and when it opens by itself.
///
/// Stored: every key is required. Append cases only, never rename.
struct Workspace {
    /// In screen points, from the top left of the main display, y growing downwards.
    struct Rect {
        double x = 0;
        double y = 0;
        double width = 0;
        double height = 0;

        friend bool operator==(const Rect&, const Rect&) = default;
    };

    /// Something to open.
    struct Item {
        struct App {
            BundleID id;
            friend bool operator==(const App&, const App&) = default;
        };
        /// A file or folder by its absolute path.
        struct File {
            std::string path;
            friend bool operator==(const File&, const File&) = default;
        };
        /// An absolute link.
        struct Url {
            std::string text;
            friend bool operator==(const Url&, const Url&) = default;
        };

        std::variant<App, File, Url> content;

        friend bool operator==(const Item&, const Item&) = default;
    };

    /// Where a window belongs.
    struct WindowSlot {
        BundleID bundleID;
        /// Place in the app's list of windows, 0 for the first.
        int index = 0;
        Rect frame;
        std::optional<std::string> screenName;

        friend bool operator==(const WindowSlot&, const WindowSlot&) = default;
    };

    /// What happens to the other apps that run when the workspace opens.
    enum class Others { keep, hide, quit };

    /// When the workspace opens by itself.
    struct Trigger {
        struct Schedule {
            std::set<int> weekdays; ///< 1 = Sunday … 7 = Saturday
            int hour;               ///< 0 to 23
            int minute;             ///< 0 to 59
            friend bool operator==(const Schedule&, const Schedule&) = default;
        };
        struct Display {
            std::string nameContains;
            friend bool operator==(const Display&, const Display&) = default;
        };
        struct Focus {
            std::string name;
            friend bool operator==(const Focus&, const Focus&) = default;
        };

        std::variant<Schedule, Display, Focus> content;

        friend bool operator==(const Trigger&, const Trigger&) = default;
    };

    Uuid id;
    std::string name;
    /// Name of the picture shown beside the name.
    std::string symbol;
    std::vector<Item> items;
    std::vector<WindowSlot> windows;
    Others others = Others::keep;
    std::vector<Trigger> triggers;
    /// Whether the grid shows only this workspace's apps while it is open.
    bool focusGrid = false;

    friend bool operator==(const Workspace&, const Workspace&) = default;
};

void toJson(json::Value& object, const Workspace::Rect& rect);
void fromJson(const json::Value& object, Workspace::Rect& rect);
void toJson(json::Value& object, const Workspace::Item& item);
void fromJson(const json::Value& object, Workspace::Item& item);
void toJson(json::Value& object, const Workspace::WindowSlot& slot);
void fromJson(const json::Value& object, Workspace::WindowSlot& slot);
void toJson(json::Value& value, const Workspace::Others& others);
void fromJson(const json::Value& value, Workspace::Others& others);
void toJson(json::Value& object, const Workspace::Trigger& trigger);
void fromJson(const json::Value& object, Workspace::Trigger& trigger);
void toJson(json::Value& object, const Workspace& workspace);
void fromJson(const json::Value& object, Workspace& workspace);

} // namespace vellory
