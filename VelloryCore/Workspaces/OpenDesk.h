// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "Workspaces/Workspace.h"

namespace vellory {

/// What is open on the desk, as far as the user chose to take it into a new workspace.
struct OpenDesk {
    std::vector<BundleID> running{};    ///< apps that appear in the dock, in the system's order
    std::vector<std::string> folders{}; ///< paths of the file manager's windows
    std::vector<std::string> tabs{};    ///< addresses of browser tabs, in order, unfiltered
    std::vector<Workspace::WindowSlot> windows{}; ///< frames of the windows of these apps

    /// The apps that a workspace made from this desk opens: not the program itself and not the
    /// file manager.
    std::vector<BundleID> apps() const;

    /// The tabs worth reopening: web addresses, each once, where it came first.
    std::vector<std::string> links() const;

    /// A workspace that opens all of it again: apps, then folders, then links.
    Workspace workspace(const Uuid& id, std::string name) const;
};

} // namespace vellory
