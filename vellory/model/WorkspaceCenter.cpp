// SPDX-License-Identifier: Apache-2.0
#include "model/WorkspaceCenter.h"

#include <algorithm>
#include <utility>

#include <QPointer>

#include "Workspaces/OpenDesk.h"
#include "Workspaces/WorkspaceTexts.h"
#include "platform/Desktop.h"
#include "platform/WindowPlacer.h"

namespace vellory {

WorkspaceCenter::WorkspaceCenter(Parts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)), runner_(parts_.runner) {}

std::optional<double> WorkspaceCenter::remaining() const {
    return session_ ? session_->remaining(parts_.runner.clock.now()) : std::nullopt;
}

bool WorkspaceCenter::canPlaceWindows(bool prompt) {
    return parts_.runner.windowPlacer.isTrusted(prompt);
}

void WorkspaceCenter::open(const Workspace& workspace, std::optional<int> minutes) {
    Q_EMIT willOpen();
    std::set<BundleID> leaving;
    if (session_ && session_->workspace != workspace.id) {
        const auto used = workspace.appIDs();
        leaving = close(true, {used.begin(), used.end()});
    }
    std::vector<BundleID> running;
    std::set<BundleID> hidden;
    for (const RunningApp& app : runner_.regularApps()) {
        // One that the workspace before takes with it is not to come back after this one.
        if (leaving.contains(app.bundleID)) {
            continue;
        }
        running.push_back(app.bundleID);
        if (app.isHidden) {
            hidden.insert(app.bundleID);
        }
    }
    const std::set<BundleID> protectedApps = parts_.protectedApps();
    session_ = WorkspaceSession::begin(workspace, running, hidden, protectedApps,
                                       parts_.runner.clock.now(), minutes);
    parts_.workspaces.setActive(workspace.id);
    Q_EMIT sessionChanged();
    Q_EMIT launcherHideRequested();
    runner_.open(workspace, protectedApps);
    scheduleSessionEnd();
    if (minutes) {
        parts_.runner.notices.post(
            Notice::confirmation(WorkspaceTexts::sessionBegan(workspace.name, *minutes),
                                 std::string(WorkspaceTexts::sessionBeganSymbol)));
    }
}

std::set<BundleID> WorkspaceCenter::close(bool silently, const std::set<BundleID>& keep) {
    if (!session_) {
        parts_.workspaces.setActive(std::nullopt);
        return {};
    }
    std::set<BundleID> quitting =
        runner_.close(session_->closePlan(parts_.prefs.closeApps()), keep);
    const std::string name = nameOf(session_->workspace, WorkspaceTexts::unnamed);
    session_.reset();
    sessionTimer_.reset();
    parts_.workspaces.setActive(std::nullopt);
    Q_EMIT sessionChanged();
    if (!silently) {
        parts_.runner.notices.post(Notice::confirmation(WorkspaceTexts::closed(name),
                                                        std::string(WorkspaceTexts::closedSymbol)));
    }
    return quitting;
}

std::string WorkspaceCenter::nameOf(const Uuid& workspace, std::string_view otherwise) const {
    const Workspace* found = parts_.workspaces.find(workspace);
    return found == nullptr ? std::string(otherwise) : found->name;
}

void WorkspaceCenter::scheduleSessionEnd() {
    sessionTimer_.reset();
    if (session_ && session_->ends) {
        sessionTimer_ = parts_.runner.scheduler.every(sessionInterval, [this] { checkSession(); });
    }
}

void WorkspaceCenter::checkSession() {
    const auto left = remaining();
    if (!left) {
        return;
    }
    Q_EMIT remainingChanged();
    if (*left > 0) {
        return;
    }
    const Workspace* active = parts_.workspaces.activeWorkspace();
    const std::string name =
        active == nullptr ? std::string(WorkspaceTexts::unnamedSession) : active->name;
    close(true);
    parts_.runner.notices.post(Notice::hint(WorkspaceTexts::sessionFinished(name),
                                            std::string(WorkspaceTexts::sessionFinishedSymbol)));
    parts_.runner.desktop.playSound(std::string(WorkspaceTexts::sessionFinishedSound));
}

// --- New workspace from what's open ---

void WorkspaceCenter::makeFromOpen(Choices choices, std::function<void(const Workspace&)> done) {
    OpenDesk desk;
    for (const RunningApp& app : runner_.regularApps()) {
        if (!parts_.neverTaken.contains(app.bundleID)) {
            desk.running.push_back(app.bundleID);
        }
    }
    if (!choices.finder && !choices.tabs) {
        finishMaking(desk, choices, done);
        return;
    }
    const Desktop& desktop = parts_.runner.desktop;
    parts_.runner.scheduler.inBackground([self = QPointer(this), &desktop, desk = std::move(desk),
                                          choices,
                                          done = std::move(done)]() mutable -> Scheduler::Task {
        if (choices.finder) {
            desk.folders = desktop.openFolders();
        }
        if (choices.tabs) {
            desk.tabs = desktop.openTabs();
        }
        return [self, desk = std::move(desk), choices, done = std::move(done)] {
            if (self) {
                self->finishMaking(desk, choices, done);
            }
        };
    });
}

Uuid WorkspaceCenter::create(const std::string& name) {
    Workspace workspace;
    workspace.id = parts_.newID();
    workspace.name = name;
    workspace.symbol = "rectangle.3.group";
    parts_.workspaces.update(workspace);
    return workspace.id;
}

void WorkspaceCenter::duplicate(const Uuid& id, const std::string& name) {
    const auto& all = parts_.workspaces.all();
    const auto original = std::ranges::find(all, id, &Workspace::id);
    if (original == all.end()) {
        return;
    }
    const auto place = static_cast<int>(original - all.begin()) + 1;
    Workspace copy = *original;
    copy.id = parts_.newID();
    copy.name = name;
    copy.triggers.clear();
    parts_.workspaces.update(copy);
    parts_.workspaces.move(copy.id, place);
}

void WorkspaceCenter::finishMaking(const OpenDesk& desk, Choices choices,
                                   const std::function<void(const Workspace&)>& done) {
    const std::string name =
        "Snapshot " + parts_.calendar.text(parts_.runner.clock.now(), parts_.locale);
    Workspace made = desk.workspace(parts_.newID(), name);
    if (choices.windows) {
        made.windows = runner_.captureWindows(made);
    }
    parts_.workspaces.update(made);
    done(made);
}

} // namespace vellory
