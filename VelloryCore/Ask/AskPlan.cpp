// SPDX-License-Identifier: Apache-2.0
#include "Ask/AskPlan.h"

#include <algorithm>
#include <utility>

#include "Ask/AskTemplates.h"

namespace vellory {

namespace {

std::vector<Workspace::WindowSlot> windowsOf(const AskPlan& plan, const Workspace::Rect& screen) {
    const auto frames = WindowTiling::frames(plan.arrangement, static_cast<int>(plan.apps.size()),
                                             screen, askWindowGap);
    std::vector<Workspace::WindowSlot> windows;
    for (std::size_t i = 0; i < std::min(frames.size(), plan.apps.size()); ++i) {
        windows.push_back({plan.apps[i], 0, frames[i], std::nullopt});
    }
    return windows;
}

Workspace extended(Workspace workspace, const std::vector<BundleID>& apps) {
    const auto own = workspace.appIDs();
    std::set<BundleID> known(own.begin(), own.end());
    for (const BundleID& app : apps) {
        if (known.insert(app).second) {
            workspace.items.push_back(Workspace::Item::app(app));
        }
    }
    return workspace;
}

} // namespace

Workspace AskPlan::workspace(const std::optional<Workspace::Rect>& screen,
                             const std::optional<Workspace>& existing,
                             const UuidSource& newID) const {
    if (existing) {
        return extended(*existing, apps);
    }
    Workspace made;
    made.id = newID();
    made.name = name;
    made.symbol = symbol;
    for (const BundleID& app : apps) {
        made.items.push_back(Workspace::Item::app(app));
    }
    for (const std::string& url : urls) {
        made.items.push_back(Workspace::Item::url(url));
    }
    for (const std::string& file : files) {
        made.items.push_back(Workspace::Item::file(file));
    }
    if (screen) {
        made.windows = windowsOf(*this, *screen);
    }
    made.others = hideOthers ? Workspace::Others::hide : Workspace::Others::keep;
    return made;
}

void toJson(json::Value& object, const AskPlan& plan) {
    json::write(object, "name", plan.name);
    json::write(object, "symbol", plan.symbol);
    json::write(object, "apps", plan.apps);
    json::write(object, "urls", plan.urls);
    json::write(object, "files", plan.files);
    json::write(object, "arrangement", plan.arrangement);
    json::write(object, "hideOthers", plan.hideOthers);
    json::write(object, "basedOn", plan.basedOn);
    json::write(object, "gridLayout", plan.gridLayout);
    json::write(object, "note", plan.note);
    json::write(object, "byModel", plan.byModel);
}

void fromJson(const json::Value& object, AskPlan& plan) {
    json::require(object, "name", plan.name);
    json::require(object, "symbol", plan.symbol);
    json::require(object, "apps", plan.apps);
    json::require(object, "urls", plan.urls);
    json::require(object, "files", plan.files);
    json::require(object, "arrangement", plan.arrangement);
    json::require(object, "hideOthers", plan.hideOthers);
    json::readIfPresent(object, "basedOn", plan.basedOn);
    json::readIfPresent(object, "gridLayout", plan.gridLayout);
    json::require(object, "note", plan.note);
    json::require(object, "byModel", plan.byModel);
}

std::string localizedAskName(const AskPlan& plan, const Localize& localize) {
    const bool ofTemplate =
        std::ranges::find(AskTemplates::all, plan.name, &AskTemplates::Template::name) !=
        AskTemplates::all.end();
    if (plan.byModel || plan.basedOn || !ofTemplate) {
        return plan.name;
    }
    return localize("AskTemplate." + plan.name, plan.name);
}

} // namespace vellory
