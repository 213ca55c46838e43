// SPDX-License-Identifier: Apache-2.0
#include "Workspaces/WorkspaceSession.h"

#include <algorithm>

namespace vellory {

namespace {

using Session = WorkspaceSession;

/// The elements of `list` that are not in `without`, in their order.
std::vector<BundleID> excluding(const std::vector<BundleID>& list,
                                const std::set<BundleID>& without) {
    std::vector<BundleID> out;
    std::ranges::copy_if(list, std::back_inserter(out),
                         [&](const BundleID& app) { return !without.contains(app); });
    return out;
}

std::set<BundleID> setOf(const std::vector<BundleID>& list) {
    return {list.begin(), list.end()};
}

} // namespace

Session Session::begin(const Workspace& workspace, const std::vector<BundleID>& running,
                       const std::set<BundleID>& hiddenNow, const std::set<BundleID>& protectedApps,
                       Date now, std::optional<int> minutes) {
    const auto aside = workspace.appsToSetAside(running, protectedApps);
    Session session;
    session.workspace = workspace.id;
    session.started = now;
    if (minutes) {
        session.ends = now + *minutes * 60.0;
    }
    session.launched = excluding(workspace.appIDs(), setOf(running));
    switch (workspace.others) {
    case Workspace::Others::hide:
        session.hidden = excluding(aside, hiddenNow);
        break;
    case Workspace::Others::quit:
        session.quit = aside;
        break;
    case Workspace::Others::keep:
        break;
    }
    return session;
}

std::vector<Session::Action> Session::asideActions(const Workspace& workspace,
                                                   const std::vector<BundleID>& running,
                                                   const std::set<BundleID>& protectedApps) {
    const Change change = workspace.others == Workspace::Others::quit ? Change::quit : Change::hide;
    std::vector<Action> out;
    for (BundleID& app : workspace.appsToSetAside(running, protectedApps)) {
        out.push_back({std::move(app), change});
    }
    return out;
}

Session::ClosePlan Session::closePlan(CloseApps closeApps) const {
    return {.quit = closeApps == CloseApps::quit ? launched : std::vector<BundleID>{},
            .hide = closeApps == CloseApps::hide ? launched : std::vector<BundleID>{},
            .unhide = hidden,
            .reopen = quit};
}

std::vector<Session::Action> Session::ClosePlan::actions(const std::vector<BundleID>& running,
                                                         const std::set<BundleID>& keep) const {
    const auto toQuit = setOf(quit);
    const auto toHide = setOf(hide);
    const auto toUnhide = setOf(unhide);
    std::vector<Action> out;
    for (const BundleID& app : running) {
        if (keep.contains(app)) {
            continue;
        }
        if (toQuit.contains(app)) {
            out.push_back({app, Change::quit});
        } else if (toHide.contains(app)) {
            out.push_back({app, Change::hide});
        } else if (toUnhide.contains(app)) {
            out.push_back({app, Change::unhide});
        }
    }
    return out;
}

std::vector<BundleID> Session::ClosePlan::appsToReopen(const std::set<BundleID>& keep) const {
    return excluding(reopen, keep);
}

std::optional<double> Session::remaining(Date now) const {
    if (!ends) {
        return std::nullopt;
    }
    // This way round a moment that is no number leaves nothing, rather than no number.
    return std::max(0.0, ends->since(now));
}

std::string_view rawValue(Session::CloseApps choice) {
    switch (choice) {
    case Session::CloseApps::quit:
        return "quit";
    case Session::CloseApps::hide:
        return "hide";
    case Session::CloseApps::keep:
        return "keep";
    }
    return {};
}

std::optional<Session::CloseApps> closeAppsFromRawValue(std::string_view text) {
    for (const auto choice :
         {Session::CloseApps::quit, Session::CloseApps::hide, Session::CloseApps::keep}) {
        if (rawValue(choice) == text) {
            return choice;
        }
    }
    return std::nullopt;
}

void toJson(json::Value& object, const Session& session) {
    json::write(object, "workspace", session.workspace);
    json::write(object, "started", session.started);
    json::write(object, "ends", session.ends);
    json::write(object, "launched", session.launched);
    json::write(object, "hidden", session.hidden);
    json::write(object, "quit", session.quit);
}

void fromJson(const json::Value& object, Session& session) {
    json::require(object, "workspace", session.workspace);
    json::require(object, "started", session.started);
    json::readIfPresent(object, "ends", session.ends);
    json::require(object, "launched", session.launched);
    json::require(object, "hidden", session.hidden);
    json::require(object, "quit", session.quit);
}

} // namespace vellory
