// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include <QObject>

#include "Support/Uuid.h"
#include "Workspaces/Workspace.h"

namespace vellory {

/// The user's workspaces in their order, their file, and which of them is open.
class WorkspaceList : public QObject {
    Q_OBJECT

  public:
    explicit WorkspaceList(std::filesystem::path file, QObject* parent = nullptr);

    void load();

    const std::vector<Workspace>& all() const { return all_; }
    /// Nothing when there is no such workspace. Valid until the list changes.
    const Workspace* find(const Uuid& id) const;

    /// Replaces the workspace with the same identity, or adds this one at the end, and saves all.
    /// A file that cannot be written is tried again with the next change.
    void update(const Workspace& workspace);
    /// Lets the workspace open these apps too, those that it does not open yet.
    void addApps(const Uuid& id, const std::vector<BundleID>& apps);
    /// To the place `index` among the others, or the nearest one there is.
    void move(const Uuid& id, int index);
    /// Also closes nothing: who has it open keeps its session.
    void remove(const Uuid& id);

    /// The workspace whose session is open.
    const std::optional<Uuid>& active() const { return active_; }
    void setActive(const std::optional<Uuid>& id);
    const Workspace* activeWorkspace() const { return active_ ? find(*active_) : nullptr; }

  Q_SIGNALS:
    void changed();
    void activeChanged();

  private:
    void save();

    std::filesystem::path file_;
    std::vector<Workspace> all_;
    std::optional<Uuid> active_;
};

} // namespace vellory
