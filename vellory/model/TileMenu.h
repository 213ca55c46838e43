// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Board/Board.h"
#include "model/MenuEntry.h"

namespace vellory {

class AppModel;
class LauncherState;

/// The context menus of the grid. The actions hold the model and the state, and do nothing when
/// what they are about is gone.
class TileMenu {
  public:
    TileMenu(AppModel& model, LauncherState& state) : model_(model), state_(state) {}

    /// For one of `LauncherState::currentItems`, or an app that is suggested above them. On a
    /// selected app, also what can be done with the whole selection.
    Menu forTile(const Tile& tile) const;
    Menu forBackground() const;

  private:
    Menu forApp(const BundleID& id) const;
    /// Whether the tile stands on what is shown now, and not only among the suggestions.
    bool isShown(const Tile& tile) const;
    Menu forFolder(const Folder& folder) const;
    void addAppActions(const BundleID& id, Menu& menu) const;
    void addPlacing(const Tile& tile, Menu& menu) const;
    MenuEntry folderStyle(const Folder& folder) const;
    MenuEntry moveIntoFolder(const BundleID& id) const;
    MenuEntry addToWorkspace(const std::vector<BundleID>& ids) const;

    AppModel& model_;
    LauncherState& state_;
};

} // namespace vellory
