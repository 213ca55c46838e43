// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/Workspace.h"

namespace vellory {

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

void toJson(json::Value& object, const Workspace::Item& item) {
    if (const auto* app = std::get_if<Workspace::Item::App>(&item.content)) {
        json::write(object["app"], "_0", app->id);
    } else if (const auto* file = std::get_if<Workspace::Item::File>(&item.content)) {
        json::write(object["file"], "_0", file->path);
    } else {
        json::write(object["url"], "_0", std::get<Workspace::Item::Url>(item.content).text);
    }
}

void fromJson(const json::Value& object, Workspace::Item& item) {
    const auto [name, payload] = json::onlyCase(object);
    if (name == "app") {
        json::require(payload, "_0", item.content.emplace<Workspace::Item::App>().id);
    } else if (name == "file") {
        json::require(payload, "_0", item.content.emplace<Workspace::Item::File>().path);
    } else if (name == "url") {
        json::require(payload, "_0", item.content.emplace<Workspace::Item::Url>().text);
    } else {
        throw json::DecodingError("unknown kind of item");
    }
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

void toJson(json::Value& value, const Workspace::Others& others) {
    switch (others) {
    case Workspace::Others::keep:
        value = "keep";
        return;
    case Workspace::Others::hide:
        value = "hide";
        return;
    case Workspace::Others::quit:
        value = "quit";
        return;
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
        throw json::DecodingError("unknown rule for other apps");
    }
}

void toJson(json::Value& object, const Workspace::Trigger& trigger) {
    if (const auto* schedule = std::get_if<Workspace::Trigger::Schedule>(&trigger.content)) {
        auto& payload = object["schedule"];
        json::write(payload, "weekdays", schedule->weekdays);
        json::write(payload, "hour", schedule->hour);
        json::write(payload, "minute", schedule->minute);
    } else if (const auto* display = std::get_if<Workspace::Trigger::Display>(&trigger.content)) {
        json::write(object["display"], "_0", display->nameContains);
    } else {
        json::write(object["focus"], "_0",
                    std::get<Workspace::Trigger::Focus>(trigger.content).name);
    }
}

void fromJson(const json::Value& object, Workspace::Trigger& trigger) {
    const auto [name, payload] = json::onlyCase(object);
    if (name == "schedule") {
        auto& schedule = trigger.content.emplace<Workspace::Trigger::Schedule>();
        json::require(payload, "weekdays", schedule.weekdays);
        json::require(payload, "hour", schedule.hour);
        json::require(payload, "minute", schedule.minute);
    } else if (name == "display") {
        json::require(payload, "_0",
                      trigger.content.emplace<Workspace::Trigger::Display>().nameContains);
    } else if (name == "focus") {
        json::require(payload, "_0", trigger.content.emplace<Workspace::Trigger::Focus>().name);
    } else {
        throw json::DecodingError("unknown kind of trigger");
    }
}

void toJson(json::Value& object, const Workspace& workspace) {
    json::write(object, "id", workspace.id);
    json::write(object, "name", workspace.name);
    json::write(object, "symbol", workspace.symbol);
    json::write(object, "items", workspace.items);
    json::write(object, "windows", workspace.windows);
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

} // namespace vellory
