// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/TriggerEngine.h"

#include <algorithm>

#include "Support/Text.h"

namespace vellory {

namespace {

using Trigger = Workspace::Trigger;

/// The workspaces with at least one trigger of type `Kind` for which `fires(trigger)` holds.
template <class Kind, class Predicate>
std::vector<Workspace> withTrigger(const std::vector<Workspace>& workspaces, Predicate fires) {
    std::vector<Workspace> out;
    std::ranges::copy_if(workspaces, std::back_inserter(out), [&](const Workspace& workspace) {
        return std::ranges::any_of(workspace.triggers, [&](const Trigger& trigger) {
            const auto* kind = std::get_if<Kind>(&trigger.content);
            return kind != nullptr && fires(*kind);
        });
    });
    return out;
}

} // namespace

namespace TriggerEngine {

std::vector<Workspace> scheduled(const std::vector<Workspace>& workspaces, Date now,
                                 const Calendar& calendar) {
    const auto clock = calendar.components(now);
    if (!clock) {
        return {};
    }
    return withTrigger<Trigger::Schedule>(workspaces, [&](const auto& schedule) {
        return schedule.weekdays.contains(clock->weekday) && schedule.hour == clock->hour &&
               schedule.minute == clock->minute;
    });
}

std::vector<Workspace> displays(const std::vector<Workspace>& workspaces,
                                const std::vector<std::string>& added, std::string_view locale) {
    return withTrigger<Trigger::Display>(workspaces, [&](const auto& display) {
        return !display.text.empty() && std::ranges::any_of(added, [&](const std::string& name) {
            return Text::containsIgnoringCase(name, display.text, locale);
        });
    });
}

std::vector<Workspace> focus(const std::vector<Workspace>& workspaces, std::string_view name) {
    if (name.empty()) {
        return {};
    }
    return withTrigger<Trigger::Focus>(
        workspaces, [&](const auto& focus) { return Text::equalsIgnoringCase(focus.name, name); });
}

std::optional<Workspace> workspaceFor(const Link& link, const std::vector<Workspace>& list) {
    if (link.scheme() != "vellory" || link.host() != "workspace") {
        return std::nullopt;
    }
    return workspaceNamed(link.pathName().value_or(""), list);
}

std::optional<Workspace> workspaceNamed(std::string_view key, const std::vector<Workspace>& list) {
    const auto id = Uuid::parse(key);
    const auto found = std::ranges::find_if(list, [&](const Workspace& workspace) {
        return workspace.id == id || Text::equalsIgnoringCase(workspace.name, key);
    });
    return found != list.end() ? std::optional(*found) : std::nullopt;
}

} // namespace TriggerEngine

std::vector<std::string> TriggerState::displaysChanged(std::vector<std::string> now) {
    std::vector<std::string> added;
    std::ranges::copy_if(now, std::back_inserter(added), [&](const std::string& name) {
        return std::ranges::find(displays_, name) == displays_.end();
    });
    displays_ = std::move(now);
    return added;
}

bool TriggerState::focusChanged(std::string_view name) {
    if (name.empty() || name == focus_) {
        return false;
    }
    focus_ = name;
    return true;
}

} // namespace vellory
