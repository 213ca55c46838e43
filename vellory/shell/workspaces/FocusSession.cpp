// SPDX-License-Identifier: Apache-2.0
#include "shell/workspaces/FocusSession.h"

#include <algorithm>
#include <cmath>

#include "Workspaces/WorkspaceTexts.h"
#include "shell/search/ShownText.h"

namespace vellory {

namespace {
constexpr int secondsPerMinute = 60;
constexpr int secondsPerHour = 3600;
} // namespace

FocusSession::FocusSession(AppModel& model, const LauncherState& state, Scheduler& scheduler,
                           QObject* parent)
    : QObject(parent), model_(model), state_(state), scheduler_(scheduler) {
    connect(&model_.workspaceCenter(), &WorkspaceCenter::sessionChanged, this,
            &FocusSession::update);
    connect(&model_.workspaces(), &WorkspaceList::changed, this, &FocusSession::changed);
    connect(&state_, &LauncherState::presentedChanged, this, &FocusSession::update);
    update();
}

void FocusSession::update() {
    if (!isRunning() || !state_.presented()) {
        ticking_.reset();
    } else if (ticking_ == nullptr) {
        ticking_ = scheduler_.every(1.0, [this] { Q_EMIT changed(); });
    }
    Q_EMIT changed();
}

const Workspace* FocusSession::workspace() const {
    const auto& session = model_.session();
    return session ? model_.workspaces().find(session->workspace) : nullptr;
}

QString FocusSession::name() const {
    const Workspace* found = workspace();
    return found != nullptr ? oneLine(found->name) : toQString(WorkspaceTexts::unnamedSession);
}

QString FocusSession::symbol() const {
    const Workspace* found = workspace();
    return found != nullptr ? QString::fromStdString(found->symbol)
                            : toQString(WorkspaceTexts::sessionBeganSymbol);
}

// Rounded up, so that a session of 25 minutes begins with 25:00 and 0:00 is its end.
int FocusSession::seconds() const {
    return static_cast<int>(std::ceil(model_.workspaceCenter().remaining().value_or(0)));
}

QString FocusSession::remaining() const {
    const int all = seconds();
    const int hours = all / secondsPerHour;
    const int minutes = all % secondsPerHour / secondsPerMinute;
    const QString rest = QString(":%1").arg(all % secondsPerMinute, 2, 10, QChar('0'));
    return hours > 0 ? QString("%1:%2").arg(hours).arg(minutes, 2, 10, QChar('0')) + rest
                     : QString::number(minutes) + rest;
}

QString FocusSession::spoken() const {
    const int minutes = (seconds() + secondsPerMinute - 1) / secondsPerMinute;
    return minutes == 1 ? tr("1 minute left") : tr("%1 minutes left").arg(minutes);
}

double FocusSession::share() const {
    const auto& session = model_.session();
    if (!session || !session->ends) {
        return 0;
    }
    const double whole = session->ends->secondsSince2001 - session->started.secondsSince2001;
    return whole > 0
               ? std::clamp(model_.workspaceCenter().remaining().value_or(0) / whole, 0.0, 1.0)
               : 0;
}

} // namespace vellory
