// SPDX-License-Identifier: Apache-2.0
#include "model/WorkspaceRunner.h"

#include <algorithm>
#include <map>
#include <utility>

#include "Support/Link.h"
#include "Workspaces/WorkspaceTexts.h"
#include "platform/Desktop.h"
#include "platform/Displays.h"
#include "platform/WindowPlacer.h"

namespace vellory {

namespace {

bool intersects(const Workspace::Rect& a, const Workspace::Rect& b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height &&
           b.y < a.y + a.height;
}

std::vector<BundleID> idsOf(const std::vector<RunningApp>& apps) {
    std::vector<BundleID> ids;
    std::ranges::transform(apps, std::back_inserter(ids), &RunningApp::bundleID);
    return ids;
}

/// The first running instance of each of `wanted` that runs, each once and in that order.
std::vector<RunningApp> firstInstances(const std::vector<BundleID>& wanted,
                                       const std::vector<RunningApp>& running) {
    std::vector<RunningApp> instances;
    std::set<BundleID> seen;
    for (const BundleID& id : wanted) {
        const auto found = std::ranges::find(running, id, &RunningApp::bundleID);
        if (found != running.end() && seen.insert(id).second) {
            instances.push_back(*found);
        }
    }
    return instances;
}

} // namespace

std::vector<RunningApp> WorkspaceRunner::regularApps() const {
    std::vector<RunningApp> apps = parts_.runningApps.list();
    std::erase_if(apps,
                  [](const RunningApp& app) { return !app.isRegular || app.bundleID.empty(); });
    return apps;
}

// --- Opening ---

void WorkspaceRunner::open(const Workspace& workspace, const std::set<BundleID>& protectedApps) {
    giveUp();
    workspace_ = workspace;
    protectedApps_ = protectedApps;
    firstOpened_.reset();
    // What is there moves before anything new appears.
    if (!workspace_.windows.empty() && parts_.windowPlacer.isTrusted(false)) {
        placeWindows(workspace_.windows, parts_.clock.now() + patience);
    }
    openItems(0);
}

void WorkspaceRunner::giveUp() {
    nextItems_.reset();
    nextLook_.reset();
    pending_.clear();
    awaited_.reset();
}

void WorkspaceRunner::openItems(std::size_t next) {
    const std::size_t end = std::min(next + itemsAtOnce, workspace_.items.size());
    for (; next < end; ++next) {
        openItem(workspace_.items[next]);
    }
    if (next == workspace_.items.size()) {
        finishOpening();
    } else {
        nextItems_ = parts_.scheduler.after(0, [this, next] { openItems(next); });
    }
}

void WorkspaceRunner::openItem(const Workspace::Item& item) {
    if (const BundleID* id = item.bundleID()) {
        if (const auto app = parts_.locate(*id)) {
            parts_.runningApps.open(*app, RunningApps::Open::inBackground, [](const auto&) {});
            if (!firstOpened_) {
                firstOpened_ = *id;
            }
        }
    } else if (const std::string* link = item.link()) {
        if (const auto parsed = Link::parseTyped(*link)) {
            parts_.desktop.openLink(parsed->text());
        }
    } else if (const std::string* path = item.path()) {
        parts_.desktop.openFile(*path);
    }
}

void WorkspaceRunner::finishOpening() {
    for (const auto& action :
         WorkspaceSession::asideActions(workspace_, idsOf(regularApps()), protectedApps_)) {
        perform(action);
    }
    if (!workspace_.windows.empty() && !parts_.windowPlacer.isTrusted(false)) {
        parts_.notices.post(Notice::hint(std::string(WorkspaceTexts::windowsNeedPermission),
                                         std::string(WorkspaceTexts::windowsNeedPermissionSymbol)));
        parts_.windowPlacer.isTrusted(true);
    }
    if (firstOpened_ && !parts_.runningApps.activate(*firstOpened_)) {
        awaited_ = firstOpened_;
        awaitedUntil_ = parts_.clock.now() + patience;
    }
    parts_.notices.post(
        Notice::confirmation(WorkspaceTexts::opened(workspace_.name), workspace_.symbol));
}

void WorkspaceRunner::appLaunched(const BundleID& app) {
    if (awaited_ == app) {
        if (parts_.clock.now() <= awaitedUntil_) {
            parts_.runningApps.activate(app);
        }
        awaited_.reset();
    }
}

// --- Closing ---

std::set<BundleID> WorkspaceRunner::close(const WorkspaceSession::ClosePlan& plan,
                                          const std::set<BundleID>& keep) {
    giveUp();
    std::set<BundleID> quitting;
    for (const auto& action : plan.actions(idsOf(regularApps()), keep)) {
        perform(action);
        if (action.change == WorkspaceSession::Change::quit) {
            quitting.insert(action.app);
        }
    }
    for (const BundleID& id : plan.appsToReopen(keep)) {
        if (const auto app = parts_.locate(id)) {
            parts_.runningApps.open(*app, RunningApps::Open::inBackground, [](const auto&) {});
        }
    }
    return quitting;
}

void WorkspaceRunner::perform(const WorkspaceSession::Action& action) {
    switch (action.change) {
    case WorkspaceSession::Change::quit:
        parts_.runningApps.quit(action.app);
        break;
    case WorkspaceSession::Change::hide:
        parts_.runningApps.hide(action.app);
        break;
    case WorkspaceSession::Change::unhide:
        parts_.runningApps.unhide(action.app);
        break;
    }
}

// --- Windows ---

std::vector<Workspace::WindowSlot> WorkspaceRunner::captureWindows(const Workspace& workspace) {
    std::vector<Workspace::WindowSlot> slots;
    if (!parts_.windowPlacer.isTrusted(false)) {
        return slots;
    }
    const std::vector<RunningApp> apps =
        firstInstances(workspace.appIDs(), parts_.runningApps.list());
    const auto windows = parts_.windowPlacer.windows(apps);
    const std::vector<Display> displays = parts_.displays.list();
    for (std::size_t i = 0; i < windows.size(); ++i) {
        for (std::size_t index = 0; index < windows[i].size(); ++index) {
            const auto& frame = windows[i][index].frame;
            if (!frame || !(frame->width > leastSize && frame->height > leastSize)) {
                continue;
            }
            const auto display = std::ranges::find_if(
                displays, [&](const Display& each) { return intersects(each.frame, *frame); });
            slots.push_back({.bundleID = apps[i].bundleID,
                             .index = static_cast<int>(index),
                             .frame = *frame,
                             .screenName = display == displays.end()
                                               ? std::nullopt
                                               : std::optional(display->name)});
        }
    }
    return slots;
}

void WorkspaceRunner::placeWindows(std::vector<Workspace::WindowSlot> slots, Date deadline) {
    pending_ = std::move(slots);
    deadline_ = deadline;
    placePending();
}

void WorkspaceRunner::placePending() {
    nextLook_.reset();
    std::vector<BundleID> wanted;
    std::ranges::transform(pending_, std::back_inserter(wanted), &Workspace::WindowSlot::bundleID);
    const std::vector<RunningApp> apps = firstInstances(wanted, parts_.runningApps.list());
    const auto windows = parts_.windowPlacer.windows(apps);
    std::map<BundleID, std::size_t> placeOf;
    for (std::size_t i = 0; i < apps.size(); ++i) {
        placeOf.emplace(apps[i].bundleID, i);
    }
    std::erase_if(pending_, [&](const Workspace::WindowSlot& slot) {
        const auto place = placeOf.find(slot.bundleID);
        if (place == placeOf.end() || slot.index < 0 ||
            static_cast<std::size_t>(slot.index) >= windows[place->second].size()) {
            return false;
        }
        const auto& window = windows[place->second][static_cast<std::size_t>(slot.index)];
        return parts_.windowPlacer.setFrame(window.id, slot.frame);
    });
    if (!pending_.empty() && parts_.clock.now() < deadline_) {
        nextLook_ = parts_.scheduler.after(pollInterval, [this] { placePending(); });
    } else {
        pending_.clear();
    }
}

} // namespace vellory
