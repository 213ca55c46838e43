// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <set>
#include <string>

#include <QObject>

#include "Support/Uuid.h"
#include "model/Prefs.h"
#include "model/WorkspaceList.h"
#include "platform/HotKeys.h"

namespace vellory {

/// The keyboard shortcuts that open workspaces from anywhere. Main thread only.
class WorkspaceShortcuts : public QObject {
    Q_OBJECT

  public:
    WorkspaceShortcuts(WorkspaceList& workspaces, Prefs& prefs, HotKeys& hotKeys,
                       QObject* parent = nullptr);
    ~WorkspaceShortcuts() override;

    /// The shortcut of a workspace in portable text (see `HotKeys`); empty when it has none.
    std::string shortcut(const Uuid& workspace) const;
    /// An empty text takes the shortcut away. One that another workspace has goes over to this.
    void setShortcut(const Uuid& workspace, const std::string& keys);
    /// Takes away the shortcut of a workspace that is gone.
    void forget(const Uuid& workspace);
    /// Whether the workspace's shortcut could not be had, for another program holds it.
    bool isRefused(const Uuid& workspace) const;

    /// Takes the shortcuts of the workspaces there are.
    void apply();

  Q_SIGNALS:
    void changed();
    /// The workspace's shortcut was pressed.
    void pressed(const vellory::Uuid& workspace);

  private:
    WorkspaceList& workspaces_;
    Prefs& prefs_;
    HotKeys& hotKeys_;
    std::set<std::string> refused_;
};

} // namespace vellory
