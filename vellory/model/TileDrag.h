// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "Board/Board.h"
#include "Support/Uuid.h"

namespace vellory {

class AppModel;
class LauncherState;

/// A tile on its way to another place, moved by the pointer or by keys. Until `drop` only what is
/// shown changes: the board is edited once, at the end, and `cancel` leaves no trace.
///
/// An app that is dragged out of its open folder goes on over the grid. Should the dragged app
/// disappear meanwhile, the drag ends by itself.
class TileDrag : public QObject {
    Q_OBJECT

  public:
    /// A place under the pointer: the cell that it is in, counted over all pages, and how far into
    /// the cell it is (0 to 1, in the direction of reading).
    struct Point {
        int cell = 0;
        double across = 0.5;
    };

    TileDrag(AppModel& model, LauncherState& state, QObject* parent = nullptr);

    bool isActive() const { return tile_.has_value(); }
    /// What is dragged; only while active.
    const Tile& tile() const { return *tile_; }
    /// The tile that would take the dragged app in, as a folder or by becoming one.
    const std::optional<std::string>& target() const { return target_; }
    /// The tile goes to the end of the grid when it is let go now.
    bool isOverBackground() const { return overBackground_; }
    /// Where the dragged tile stands among `arranged`; nothing before it has been over the grid.
    std::optional<int> place() const { return place_; }
    /// The folder whose inside the drag is arranging.
    bool isInFolder() const { return folder_.has_value(); }

    /// Picks up one of `LauncherState::currentItems`. Not while searching.
    bool begin(const std::string& tileID);
    /// The middle of a tile takes an app in; its sides make room before and after it; a cell that
    /// no tile is in is the background.
    void hover(const Point& point);
    /// Off the grid: the others stand as they did, and a drop changes nothing there.
    void hoverElsewhere();
    /// To the place at `index` among the others, or the nearest one.
    void moveTo(int index);
    /// Onto the tile that stands `steps` from the dragged one, or onto none if it is not there.
    void aimAt(int steps);
    /// Out of the open folder, which closes: the drag goes on over the grid.
    void leaveFolder();
    /// Ends the drag with the one edit that it stands for. The folder that was made, if one was.
    std::optional<Uuid> drop();
    /// Everything is as it was, the folder open again from which the tile was taken.
    void cancel();

    /// What the grid (or the open folder) shows during the drag, the dragged tile at its place.
    std::vector<Tile> arranged() const;

  Q_SIGNALS:
    void activeChanged();
    /// `arranged`, `target`, `place` or `isOverBackground` changed.
    void changed();

  private:
    std::vector<Tile> others() const;
    std::optional<Uuid> edit();
    void onGridChanged();
    void setSpot(std::optional<int> place, std::optional<std::string> target, bool overBackground);
    void end();

    AppModel& model_;
    LauncherState& state_;
    std::optional<Tile> tile_;
    /// The folder the app was taken from, and the one it is arranged in now.
    std::optional<Uuid> source_;
    std::optional<Uuid> folder_;
    /// Where it stood before, among what was shown there.
    int origin_ = 0;
    std::optional<int> place_;
    std::optional<std::string> target_;
    bool overBackground_ = false;
};

} // namespace vellory
