// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Board/Layout.h"
#include "Board/Tile.h"
#include "Support/Text.h"

namespace vellory {

/// The user's launcher grid: one ordered list of tiles, and what the user hid, renamed and gave
/// icons of their own. A plain value that knows nothing of pages or of the platform.
///
/// Every edit made on the grid is one operation. None fails: an unknown identifier leaves the board
/// as it is, and an index out of range means the nearest end. All cost time linear in the size of
/// the board, the sorts n log n.
///
/// Invariants that every operation keeps (a file may break them; nothing repairs it):
/// - a folder never holds an empty list: who takes the last app out removes the folder too, while a
///   folder with one app stays a folder;
/// - an app stands at most once on the board, loose or in a folder.
struct Board {
    /// In grid order.
    std::vector<Tile> tiles;
    /// Apps that the grid does not show, installed or not: an app that was hidden once stays hidden
    /// when it is installed again.
    std::set<BundleID> hidden;
    /// The name shown instead of the app's own.
    std::map<BundleID, std::string> renames;
    /// Path of the image shown instead of the app's own icon: a copy under `VelloryPaths::icons`.
    std::map<BundleID, std::string> icons;

    /// Where an app stands.
    struct Location {
        std::size_t tile = 0;
        /// The app's place within the folder at `tile`; nothing when it stands loose.
        std::optional<std::size_t> inFolder;

        friend bool operator==(const Location&, const Location&) = default;
    };

    Board() = default;
    /// The board of an imported layout: its pages joined, each app at the first place that names
    /// it. Folders within folders and folders left without an app are passed over.
    Board(const Layout& layout, const UuidSource& uuids);

    /// Every app in grid order, folders opened in place.
    std::vector<BundleID> allApps() const;
    /// Null when there is no such folder. Valid until the board changes.
    const Folder* folder(const Uuid& id) const;
    /// The first place at which the app stands.
    std::optional<Location> locate(std::string_view app) const;
    /// Where the tile with this `Tile::id` stands.
    std::optional<std::size_t> indexOfTile(std::string_view tileID) const;

    /// Brings the board in line with the apps that are installed: drops what is gone, with its name
    /// and icon, and puts what is new at the end in the order given. Returns what is new.
    std::vector<BundleID> reconcile(const std::vector<BundleID>& installed);

    /// Takes the app off the board; false when it was not there.
    bool remove(std::string_view app);

    /// Moves a tile so that it stands before the tile that is at `index` now; an index past the end
    /// means last.
    void moveTile(std::string_view tileID, std::ptrdiff_t index);
    /// Moves an app, out of its folder if it is in one, before the tile that is at `index` now.
    void moveAppToTopLevel(BundleID app, std::ptrdiff_t index);

    /// Drops an app onto a tile: a folder takes it in at the end, an app makes a folder with it.
    /// Returns the folder that holds the app now. Nothing, and the board stays as it is, when the
    /// app was dropped on itself, on a folder of which it is the only app, or where no tile is.
    std::optional<Uuid> drop(BundleID app, std::string_view ontoTileID,
                             std::string_view folderTitle, const UuidSource& uuids);

    /// Gathers those of `apps` that are on the board, in the order given, in a new folder where the
    /// first of them stood. Nothing when none is on the board.
    std::optional<Uuid> makeFolder(std::vector<BundleID> apps, std::string_view title,
                                   const UuidSource& uuids);

    /// Changes a folder in place: its title, its looks, what it holds. The identity stays; an app
    /// that stands elsewhere on the board is not taken in; left without apps the folder goes.
    void updateFolder(const Uuid& id, const std::function<void(Folder&)>& edit);

    /// Opens the folder in place: its apps stand where it stood.
    void dissolveFolder(const Uuid& id);
    /// Opens every folder in place.
    void dissolveAll();

    /// Sorts the tiles by name, a folder by its title; within folders nothing moves. Stable.
    void sortBy(const std::function<std::string(const BundleID&)>& name,
                const Text::Collator& collator);
    /// Sorts the tiles by use, most first, a folder by its most used app; within folders nothing
    /// moves. Stable.
    void sortByUse(const std::function<std::int64_t(const BundleID&)>& uses);

    friend bool operator==(const Board&, const Board&) = default;
};

void toJson(json::Value& object, const Board& board);
void fromJson(const json::Value& object, Board& board);

} // namespace vellory
