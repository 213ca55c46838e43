// SPDX-License-Identifier: Apache-2.0
#include "model/TriggerCenter.h"

#include <algorithm>
#include <utility>

namespace vellory {

TriggerCenter::TriggerCenter(Parts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)) {}

TriggerCenter::~TriggerCenter() {
    parts_.displays.observe({});
}

void TriggerCenter::start() {
    state_ = TriggerState(displayNames());
    parts_.displays.observe([this] { displaysChanged(); });
    focusTimer_ = parts_.scheduler.every(focusInterval, [this] { pollFocus(); });
}

std::vector<std::string> TriggerCenter::displayNames() const {
    std::vector<std::string> names;
    std::ranges::transform(parts_.displays.list(), std::back_inserter(names), &Display::name);
    return names;
}

void TriggerCenter::minute() {
    auto shown = parts_.calendar.components(parts_.clock.now());
    if (!shown) {
        return;
    }
    shown->second = 0;
    for (const Workspace& workspace :
         TriggerEngine::scheduled(parts_.workspaces.all(), parts_.clock.now(), parts_.calendar)) {
        const auto [last, isFirst] = lastOpened_.try_emplace(workspace.id, *shown);
        if (isFirst || last->second != *shown) {
            last->second = *shown;
            parts_.open(workspace);
        }
    }
}

void TriggerCenter::displaysChanged() {
    openAll(TriggerEngine::displays(parts_.workspaces.all(), state_.displaysChanged(displayNames()),
                                    parts_.locale));
}

void TriggerCenter::pollFocus() {
    if (!parts_.prefs.readFocusDirectly() || !parts_.focusSource.canRead()) {
        return;
    }
    if (const auto name = parts_.focusSource.active()) {
        focusChanged(*name);
    }
}

void TriggerCenter::focusChanged(const std::string& name) {
    if (state_.focusChanged(name)) {
        openAll(TriggerEngine::focus(parts_.workspaces.all(), name));
    }
}

void TriggerCenter::openAll(const std::vector<Workspace>& workspaces) {
    std::ranges::for_each(workspaces, parts_.open);
}

} // namespace vellory
