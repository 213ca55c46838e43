// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/Workspace.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <iomanip>
#include <sstream>

#include "Apps/WellKnownApps.h"
#include "Support/AtomicFile.h"

namespace vellory {

namespace {

using Item = Workspace::Item;
using Trigger = Workspace::Trigger;

/// "Mon" for 2. Days out of range wrap around, so that a hand-edited file still has a title.
std::string_view dayName(int day) {
    static constexpr std::array<std::string_view, 7> names{"Sun", "Mon", "Tue", "Wed",
                                                           "Thu", "Fri", "Sat"};
    const std::int64_t index = ((std::int64_t{day} - 1) % 7 + 7) % 7;
    return names[static_cast<std::size_t>(index)];
}

std::string dayPart(const std::set<int>& weekdays) {
    if (weekdays.size() == 7) {
        return "Every day";
    }
    if (weekdays == std::set{2, 3, 4, 5, 6}) {
        return "Weekdays";
    }
    std::string out;
    for (const int day : weekdays) {
        out += out.empty() ? "" : ", ";
        out += dayName(day);
    }
    return out;
}

std::string titleOf(const Trigger::Schedule& schedule) {
    std::ostringstream out;
    out << dayPart(schedule.weekdays) << " at " << std::setfill('0') << std::setw(2)
        << schedule.hour << ':' << std::setw(2) << schedule.minute;
    return out.str();
}

std::string titleOf(const Trigger::Display& display) {
    return "When “" + display.text + "” is connected";
}

std::string titleOf(const Trigger::Focus& focus) {
    return "When the " + focus.name + " Focus turns on";
}

/// The one member of `object` that is among the cases of a choice; keys of later versions beside it
/// are ignored like everywhere else.
json::Case caseAmong(const json::Value& value, std::initializer_list<const char*> names) {
    const auto& members = json::object(value);
    auto found = members.end();
    for (const char* name : names) {
        if (const auto member = members.find(name); member != members.end()) {
            if (found != members.end()) {
                throw json::DecodingError("a choice with two cases");
            }
            found = member;
        }
    }
    if (found == members.end()) {
        throw json::DecodingError("a choice without a known case");
    }
    return {found->first, found->second};
}

std::string onlyValue(const json::Value& payload) {
    std::string out;
    json::require(payload, "_0", out);
    return out;
}

void writeCase(json::Value& object, const char* name, const std::string& value) {
    json::write(object[name], "_0", value);
}

std::expected<std::vector<Workspace>, std::error_code> read(const std::filesystem::path& file) {
    const auto text = AtomicFile::read(file, Workspace::fileLimit);
    if (!text) {
        return std::unexpected(text.error());
    }
    auto list = json::decode<std::vector<Workspace>>(*text);
    if (!list) {
        return std::unexpected(std::make_error_code(std::errc::illegal_byte_sequence));
    }
    return std::move(*list);
}

} // namespace

const BundleID* Item::bundleID() const {
    const auto* app = std::get_if<App>(&content);
    return app != nullptr ? &app->bundleID : nullptr;
}

const std::string* Item::path() const {
    const auto* file = std::get_if<File>(&content);
    return file != nullptr ? &file->path : nullptr;
}

const std::string* Item::link() const {
    const auto* url = std::get_if<Url>(&content);
    return url != nullptr ? &url->link : nullptr;
}

bool Workspace::Rect::isFinite() const {
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(width) && std::isfinite(height);
}

std::string Trigger::title() const {
    return std::visit([](const auto& trigger) { return titleOf(trigger); }, content);
}

std::string_view title(Workspace::Others others) {
    switch (others) {
    case Workspace::Others::keep:
        return "Leave other apps open";
    case Workspace::Others::hide:
        return "Hide other apps";
    case Workspace::Others::quit:
        return "Quit other apps";
    }
    return {};
}

std::vector<BundleID> Workspace::appIDs() const {
    std::vector<BundleID> out;
    for (const Item& item : items) {
        if (const BundleID* app = item.bundleID()) {
            out.push_back(*app);
        }
    }
    return out;
}

std::vector<BundleID> Workspace::appsToSetAside(const std::vector<BundleID>& running,
                                                const std::set<BundleID>& protectedApps) const {
    std::vector<BundleID> out;
    if (others == Others::keep) {
        return out;
    }
    const auto own = appIDs();
    const std::set<BundleID> ownApps(own.begin(), own.end());
    for (const BundleID& app : running) {
        if (app != WellKnownApps::finder && app != WellKnownApps::vellory &&
            !ownApps.contains(app) && !protectedApps.contains(app)) {
            out.push_back(app);
        }
    }
    return out;
}

std::vector<Workspace> Workspace::load(const std::filesystem::path& file) {
    return read(file).value_or(std::vector<Workspace>{});
}

std::expected<void, std::error_code> Workspace::save(const std::vector<Workspace>& list,
                                                     const std::filesystem::path& file) {
    if (file.has_parent_path()) {
        if (auto created = AtomicFile::createFolder(file.parent_path()); !created) {
            return created;
        }
    }
    if (!read(file)) {
        AtomicFile::keepUnreadable(file);
    }
    const std::string text = json::encode(list);
    if (text.size() > fileLimit) {
        return std::unexpected(std::make_error_code(std::errc::file_too_large));
    }
    return AtomicFile::write(file, text);
}

void toJson(json::Value& object, const Workspace& workspace) {
    json::write(object, "id", workspace.id);
    json::write(object, "name", workspace.name);
    json::write(object, "symbol", workspace.symbol);
    json::write(object, "items", workspace.items);
    // JSON cannot spell a frame that is not finite, and no window can take one; written as null it
    // would cost the reader the whole file.
    auto windows = workspace.windows;
    std::erase_if(windows, [](const auto& slot) { return !slot.frame.isFinite(); });
    json::write(object, "windows", windows);
    json::write(object, "others", workspace.others);
    json::write(object, "triggers", workspace.triggers);
    json::write(object, "focusGrid", workspace.focusGrid);
}

void fromJson(const json::Value& object, Workspace& workspace) {
    json::require(object, "id", workspace.id);
    json::require(object, "name", workspace.name);
    json::require(object, "symbol", workspace.symbol);
    json::require(object, "items", workspace.items);
    json::require(object, "windows", workspace.windows);
    json::require(object, "others", workspace.others);
    json::require(object, "triggers", workspace.triggers);
    json::require(object, "focusGrid", workspace.focusGrid);
}

void toJson(json::Value& object, const Item& item) {
    if (const auto* app = item.bundleID()) {
        writeCase(object, "app", *app);
    } else if (const auto* path = item.path()) {
        writeCase(object, "file", *path);
    } else if (const auto* link = item.link()) {
        writeCase(object, "url", *link);
    }
}

void fromJson(const json::Value& object, Item& item) {
    const auto [name, payload] = caseAmong(object, {"app", "file", "url"});
    if (name == "app") {
        item = Item::app(onlyValue(payload));
    } else if (name == "file") {
        item = Item::file(onlyValue(payload));
    } else {
        item = Item::url(onlyValue(payload));
    }
}

void toJson(json::Value& object, const Workspace::Rect& rect) {
    json::write(object, "x", rect.x);
    json::write(object, "y", rect.y);
    json::write(object, "width", rect.width);
    json::write(object, "height", rect.height);
}

void fromJson(const json::Value& object, Workspace::Rect& rect) {
    json::require(object, "x", rect.x);
    json::require(object, "y", rect.y);
    json::require(object, "width", rect.width);
    json::require(object, "height", rect.height);
}

void toJson(json::Value& object, const Workspace::WindowSlot& slot) {
    json::write(object, "bundleID", slot.bundleID);
    json::write(object, "index", slot.index);
    json::write(object, "frame", slot.frame);
    json::write(object, "screenName", slot.screenName);
}

void fromJson(const json::Value& object, Workspace::WindowSlot& slot) {
    json::require(object, "bundleID", slot.bundleID);
    json::require(object, "index", slot.index);
    json::require(object, "frame", slot.frame);
    json::readIfPresent(object, "screenName", slot.screenName);
}

void toJson(json::Value& object, const Trigger& trigger) {
    if (const auto* schedule = std::get_if<Trigger::Schedule>(&trigger.content)) {
        json::Value& payload = object["schedule"];
        json::write(payload, "weekdays", schedule->weekdays);
        json::write(payload, "hour", schedule->hour);
        json::write(payload, "minute", schedule->minute);
    } else if (const auto* display = std::get_if<Trigger::Display>(&trigger.content)) {
        writeCase(object, "display", display->text);
    } else if (const auto* focus = std::get_if<Trigger::Focus>(&trigger.content)) {
        writeCase(object, "focus", focus->name);
    }
}

void fromJson(const json::Value& object, Trigger& trigger) {
    const auto [name, payload] = caseAmong(object, {"schedule", "display", "focus"});
    if (name == "schedule") {
        Trigger::Schedule schedule;
        json::require(payload, "weekdays", schedule.weekdays);
        json::require(payload, "hour", schedule.hour);
        json::require(payload, "minute", schedule.minute);
        trigger.content = std::move(schedule);
    } else if (name == "display") {
        trigger = Trigger::display(onlyValue(payload));
    } else {
        trigger = Trigger::focus(onlyValue(payload));
    }
}

void toJson(json::Value& value, Workspace::Others others) {
    switch (others) {
    case Workspace::Others::keep:
        value = "keep";
        break;
    case Workspace::Others::hide:
        value = "hide";
        break;
    case Workspace::Others::quit:
        value = "quit";
        break;
    }
}

void fromJson(const json::Value& value, Workspace::Others& others) {
    std::string name;
    json::fromJson(value, name);
    if (name == "keep") {
        others = Workspace::Others::keep;
    } else if (name == "hide") {
        others = Workspace::Others::hide;
    } else if (name == "quit") {
        others = Workspace::Others::quit;
    } else {
        throw json::DecodingError("no rule for other apps is called " + name);
    }
}

} // namespace vellory
