// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>
#include <vector>

#include "Apps/InstalledApp.h"
#include "Support/Json.h"
#include "Support/Uuid.h"

namespace vellory {

/// A named set of apps, files and links that open together for one task, with the frames that its
/// windows should take, what happens to the other apps, and what opens it by itself.
///
/// Its identity is `id`; names need not be unique, and whoever looks one up takes the first.
struct Workspace {
    struct Item;
    struct Rect;
    struct WindowSlot;
    struct Schedule;
    struct Trigger;

    /// What happens to the other running apps when the workspace opens.
    enum class Others { keep, hide, quit };
    /// In the order that pickers show.
    static constexpr std::array allOthers{Others::keep, Others::hide, Others::quit};

    Uuid id;
    std::string name;
    std::string symbol; ///< the name of a system symbol, such as "camera.viewfinder"
    std::vector<Item> items;
    /// Empty: the windows stay where they open.
    std::vector<WindowSlot> windows;
    Others others = Others::keep;
    std::vector<Trigger> triggers;
    /// While the workspace is active, the grid shows its apps only.
    bool focusGrid = false;

    /// The apps among the items, in order; an app that is listed twice comes twice.
    std::vector<BundleID> appIDs() const;

    /// Those of `running`, in their order, that opening this workspace hides or quits: all but its
    /// own apps, the file manager, the program itself and `protectedApps`; none under `keep`.
    std::vector<BundleID> appsToSetAside(const std::vector<BundleID>& running,
                                         const std::set<BundleID>& protectedApps) const;

    /// What a workspaces file may hold at most: hundreds of times what people keep in one.
    static constexpr std::size_t fileLimit = 4U * 1024U * 1024U;

    /// The workspaces in a file; none when it cannot be read or any element is not a workspace.
    static std::vector<Workspace> load(const std::filesystem::path& file);

    /// Replaces the file, whose folder is created if need be. A file that `load` could not read is
    /// kept beside first (see `AtomicFile::keepUnreadable`). A list that `load` could not read back
    /// is refused as too large.
    static std::expected<void, std::error_code> save(const std::vector<Workspace>& list,
                                                     const std::filesystem::path& file);

    friend bool operator==(const Workspace&, const Workspace&);
};

/// Something that a workspace opens.
struct Workspace::Item {
    struct App {
        BundleID bundleID;
        friend bool operator==(const App&, const App&) = default;
    };
    /// An absolute path of a file or folder.
    struct File {
        std::string path;
        friend bool operator==(const File&, const File&) = default;
    };
    /// An absolute link.
    struct Url {
        std::string link;
        friend bool operator==(const Url&, const Url&) = default;
    };

    std::variant<App, File, Url> content;

    static Item app(BundleID bundleID) { return {App{std::move(bundleID)}}; }
    static Item file(std::string path) { return {File{std::move(path)}}; }
    static Item url(std::string link) { return {Url{std::move(link)}}; }

    // The payload when the item is of that kind.
    const BundleID* bundleID() const;
    const std::string* path() const;
    const std::string* link() const;

    friend bool operator==(const Item&, const Item&) = default;
};

/// A frame in screen points: the origin is the top left corner of the main display, and y grows
/// downwards. One that was read from a file may hold any finite numbers, also negative sizes.
struct Workspace::Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool isFinite() const;

    friend bool operator==(const Rect&, const Rect&) = default;
};

/// The saved frame of one window.
struct Workspace::WindowSlot {
    BundleID bundleID; ///< the app that owns the window
    int index = 0;     ///< the window's place in the app's list of windows, from 0
    Rect frame;
    std::optional<std::string> screenName; ///< the display that it was on

    friend bool operator==(const WindowSlot&, const WindowSlot&) = default;
};

/// A minute of the day on some days of the week. Files may hold numbers out of range; they
/// match no moment.
struct Workspace::Schedule {
    std::set<int> weekdays; ///< 1 = Sunday … 7 = Saturday
    int hour = 0;
    int minute = 0;
    friend bool operator==(const Schedule&, const Schedule&) = default;
};

/// What opens a workspace by itself.
struct Workspace::Trigger {
    using Schedule = Workspace::Schedule;
    /// A display whose name contains `text` is connected.
    struct Display {
        std::string text;
        friend bool operator==(const Display&, const Display&) = default;
    };
    /// The system's Focus mode of that name turns on.
    struct Focus {
        std::string name;
        friend bool operator==(const Focus&, const Focus&) = default;
    };

    std::variant<Schedule, Display, Focus> content;

    static Trigger schedule(std::set<int> weekdays, int hour, int minute) {
        return {Schedule{std::move(weekdays), hour, minute}};
    }
    static Trigger display(std::string text) { return {Display{std::move(text)}}; }
    static Trigger focus(std::string name) { return {Focus{std::move(name)}}; }

    /// Such as "Weekdays at 09:00".
    std::string title() const;

    friend bool operator==(const Trigger&, const Trigger&) = default;
};

inline bool operator==(const Workspace&, const Workspace&) = default;

/// Such as "Hide other apps".
std::string_view title(Workspace::Others others);

void toJson(json::Value& object, const Workspace& workspace);
void fromJson(const json::Value& object, Workspace& workspace);
void toJson(json::Value& object, const Workspace::Item& item);
void fromJson(const json::Value& object, Workspace::Item& item);
void toJson(json::Value& object, const Workspace::Rect& rect);
void fromJson(const json::Value& object, Workspace::Rect& rect);
void toJson(json::Value& object, const Workspace::WindowSlot& slot);
void fromJson(const json::Value& object, Workspace::WindowSlot& slot);
void toJson(json::Value& object, const Workspace::Trigger& trigger);
void fromJson(const json::Value& object, Workspace::Trigger& trigger);
void toJson(json::Value& value, Workspace::Others others);
void fromJson(const json::Value& value, Workspace::Others& others);

} // namespace vellory
