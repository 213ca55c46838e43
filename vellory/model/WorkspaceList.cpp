// SPDX-License-Identifier: Apache-2.0
#include "model/WorkspaceList.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace vellory {

WorkspaceList::WorkspaceList(std::filesystem::path file, QObject* parent)
    : QObject(parent), file_(std::move(file)) {}

void WorkspaceList::load() {
    all_ = Workspace::load(file_);
    Q_EMIT changed();
}

const Workspace* WorkspaceList::find(const Uuid& id) const {
    const auto found = std::ranges::find(all_, id, &Workspace::id);
    return found == all_.end() ? nullptr : &*found;
}

void WorkspaceList::update(const Workspace& workspace) {
    const auto same = std::ranges::find(all_, workspace.id, &Workspace::id);
    if (same == all_.end()) {
        all_.push_back(workspace);
    } else {
        *same = workspace;
    }
    save();
}

void WorkspaceList::addApps(const Uuid& id, const std::vector<BundleID>& apps) {
    const Workspace* found = find(id);
    if (found == nullptr) {
        return;
    }
    Workspace workspace = *found;
    for (const BundleID& app : apps) {
        const auto item = Workspace::Item::app(app);
        if (std::ranges::find(workspace.items, item) == workspace.items.end()) {
            workspace.items.push_back(item);
        }
    }
    if (workspace != *found) {
        update(workspace);
    }
}

void WorkspaceList::move(const Uuid& id, int index) {
    const auto found = std::ranges::find(all_, id, &Workspace::id);
    if (found == all_.end()) {
        return;
    }
    const int last = static_cast<int>(all_.size()) - 1;
    const auto target = all_.begin() + std::clamp(index, 0, last);
    if (target == found) {
        return;
    }
    if (target < found) {
        std::rotate(target, found, found + 1);
    } else {
        std::rotate(found, found + 1, target + 1);
    }
    save();
}

void WorkspaceList::remove(const Uuid& id) {
    if (std::erase_if(all_, [&](const Workspace& each) { return each.id == id; }) == 0) {
        return;
    }
    save();
    if (active_ == id) {
        setActive(std::nullopt);
    }
}

void WorkspaceList::setActive(const std::optional<Uuid>& id) {
    if (id != active_) {
        active_ = id;
        Q_EMIT activeChanged();
    }
}

void WorkspaceList::save() {
    std::ignore = Workspace::save(all_, file_);
    Q_EMIT changed();
}

} // namespace vellory
