// SPDX-License-Identifier: Apache-2.0
#include "model/WorkspaceShortcuts.h"

namespace vellory {

WorkspaceShortcuts::WorkspaceShortcuts(WorkspaceList& workspaces, Prefs& prefs, HotKeys& hotKeys,
                                       QObject* parent)
    : QObject(parent), workspaces_(workspaces), prefs_(prefs), hotKeys_(hotKeys) {
    hotKeys_.observe([this](const std::string& name) {
        if (const auto workspace = Uuid::parse(name)) {
            Q_EMIT pressed(*workspace);
        }
    });
}

WorkspaceShortcuts::~WorkspaceShortcuts() {
    hotKeys_.observe({});
}

std::string WorkspaceShortcuts::shortcut(const Uuid& workspace) const {
    const auto shortcuts = prefs_.workspaceShortcuts();
    const auto found = shortcuts.find(workspace.string());
    return found == shortcuts.end() ? "" : found->second;
}

void WorkspaceShortcuts::setShortcut(const Uuid& workspace, const std::string& keys) {
    auto shortcuts = prefs_.workspaceShortcuts();
    std::erase_if(shortcuts, [&](const auto& each) {
        return each.first == workspace.string() || each.second == keys;
    });
    if (!keys.empty()) {
        shortcuts[workspace.string()] = keys;
    }
    prefs_.setWorkspaceShortcuts(shortcuts);
    apply();
}

void WorkspaceShortcuts::forget(const Uuid& workspace) {
    auto shortcuts = prefs_.workspaceShortcuts();
    if (shortcuts.erase(workspace.string()) > 0) {
        prefs_.setWorkspaceShortcuts(shortcuts);
        apply();
    }
}

bool WorkspaceShortcuts::isRefused(const Uuid& workspace) const {
    return refused_.contains(workspace.string());
}

void WorkspaceShortcuts::apply() {
    HotKeys::Shortcuts wanted;
    for (const auto& [name, keys] : prefs_.workspaceShortcuts()) {
        const auto workspace = Uuid::parse(name);
        if (workspace && workspaces_.find(*workspace) != nullptr) {
            wanted.emplace(name, keys);
        }
    }
    refused_ = hotKeys_.set(wanted);
    Q_EMIT changed();
}

} // namespace vellory
