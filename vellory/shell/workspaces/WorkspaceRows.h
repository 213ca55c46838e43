// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QStringList>
#include <QVariantMap>

#include "model/AppModel.h"

/// Workspaces and their parts as rows of lists (see `RowList`).
namespace vellory {

/// The fields of a workspace's row.
inline const QStringList workspaceFields{"name", "symbol", "shortcut", "active", "summary"};
QList<QVariantMap> workspaceRows(AppModel& model);

/// The fields of a row about something that a workspace opens. `icon` is an image source, and empty
/// where `symbol` stands in its place.
inline const QStringList itemFields{"title", "detail", "icon", "symbol"};
QList<QVariantMap> itemRows(const AppModel& model, const Workspace& workspace);

/// The fields of a trigger's row: `kind` is "schedule", "display" or "focus"; `link` does by hand
/// what a Focus does.
inline const QStringList triggerFields{"kind", "title", "symbol", "link", "weekdays", "time"};
QList<QVariantMap> triggerRows(const Workspace& workspace);

} // namespace vellory
