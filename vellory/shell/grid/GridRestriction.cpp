// SPDX-License-Identifier: Apache-2.0
#include "shell/grid/GridRestriction.h"

#include "shell/search/ShownText.h"

namespace vellory {

GridRestriction::GridRestriction(AppModel& model, const LauncherState& state, QObject* parent)
    : QObject(parent), model_(model) {
    connect(&model_, &AppModel::visibleTilesChanged, this, &GridRestriction::changed);
    connect(&state, &LauncherState::presentedChanged, this, [this, &state] {
        if (!state.presented()) {
            setLifted(false);
        }
    });
}

QString GridRestriction::name() const {
    const auto& filter = model_.focusFilter();
    if (filter && filter->allowedApps(model_.workspaces().all())) {
        return filter->name.empty() ? tr("Focus") : oneLine(filter->name);
    }
    const Workspace* workspace = model_.workspaces().activeWorkspace();
    return workspace != nullptr && workspace->focusGrid ? oneLine(workspace->name) : QString();
}

} // namespace vellory
