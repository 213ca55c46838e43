// SPDX-License-Identifier: Apache-2.0
#include "Board/Board.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <ranges>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace vellory {

namespace {

/// Views into texts that outlive the set.
using AppSet = std::unordered_set<std::string_view>;

std::optional<std::size_t> indexOfFolder(const std::vector<Tile>& tiles, const Uuid& id) {
    const auto found = std::ranges::find_if(tiles, [&](const Tile& tile) {
        const Folder* folder = tile.folder();
        return folder != nullptr && folder->id == id;
    });
    if (found == tiles.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - tiles.begin());
}

void insertAt(std::vector<Tile>& tiles, std::ptrdiff_t index, Tile tile) {
    const auto clamped = std::clamp(index, std::ptrdiff_t{0}, std::ssize(tiles));
    tiles.insert(tiles.begin() + clamped, std::move(tile));
}

void eraseAt(std::vector<Tile>& tiles, std::size_t index) {
    tiles.erase(tiles.begin() + static_cast<std::ptrdiff_t>(index));
}

/// Calls `visit(app, tileIndex)` for every app in grid order.
template <class Visit>
void eachApp(const std::vector<Tile>& tiles, Visit visit) {
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (const Folder* folder = tiles[i].folder()) {
            for (const BundleID& app : folder->apps) {
                visit(app, i);
            }
        } else {
            visit(*tiles[i].app(), i);
        }
    }
}

/// Drops every app for which `isGone(app, index)` holds, and the folders that this empties, where
/// `index` is the place that the app's tile takes once what stands before it has been dropped.
template <class IsGone>
void removeApps(std::vector<Tile>& tiles, IsGone isGone) {
    std::size_t kept = 0;
    for (Tile& tile : tiles) {
        const auto isGoneHere = [&](const BundleID& app) { return isGone(app, kept); };
        bool isTileGone = false;
        if (Folder* folder = tile.folder()) {
            std::erase_if(folder->apps, isGoneHere);
            isTileGone = folder->apps.empty();
        } else {
            isTileGone = isGoneHere(*tile.app());
        }
        if (!isTileGone) {
            if (&tile != &tiles[kept]) {
                tiles[kept] = std::move(tile);
            }
            ++kept;
        }
    }
    tiles.resize(kept);
}

/// Brings `tiles` into the order of `order`, which names every index once. In place, cycle by
/// cycle: tiles are large, and a second list of them would cost more than the moving.
void arrange(std::vector<Tile>& tiles, std::vector<std::size_t> order) {
    for (std::size_t start = 0; start < order.size(); ++start) {
        if (order[start] == start) {
            continue;
        }
        Tile held = std::move(tiles[start]);
        std::size_t hole = start;
        while (order[hole] != start) {
            const std::size_t source = std::exchange(order[hole], hole);
            tiles[hole] = std::move(tiles[source]);
            hole = source;
        }
        tiles[hole] = std::move(held);
        order[hole] = hole;
    }
}

} // namespace

Board::Board(const Layout& layout, const UuidSource& uuids) {
    AppSet placed;
    placed.reserve(layout.appCount());
    for (const LayoutItem& item : layout.pages | std::views::join) {
        if (const auto* app = item.app()) {
            if (placed.insert(app->bundleID).second) {
                tiles.emplace_back(app->bundleID);
            }
            continue;
        }
        std::vector<BundleID> apps;
        for (const LayoutItem& inner : item.folder()->pages | std::views::join) {
            const auto* app = inner.app();
            if (app != nullptr && placed.insert(app->bundleID).second) {
                apps.push_back(app->bundleID);
            }
        }
        if (!apps.empty()) {
            tiles.emplace_back(
                Folder{.id = uuids(), .title = item.folder()->title, .apps = std::move(apps)});
        }
    }
}

std::vector<BundleID> Board::allApps() const {
    std::vector<BundleID> apps;
    apps.reserve(tiles.size());
    eachApp(tiles, [&](const BundleID& app, std::size_t) { apps.push_back(app); });
    return apps;
}

const Folder* Board::folder(const Uuid& id) const {
    const auto index = indexOfFolder(tiles, id);
    return index ? tiles[*index].folder() : nullptr;
}

std::optional<Board::Location> Board::locate(std::string_view app) const {
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (const Folder* folder = tiles[i].folder()) {
            const auto found = std::ranges::find(folder->apps, app);
            if (found != folder->apps.end()) {
                return Location{i, static_cast<std::size_t>(found - folder->apps.begin())};
            }
        } else if (*tiles[i].app() == app) {
            return Location{i, std::nullopt};
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Board::indexOfTile(std::string_view tileID) const {
    if (tileID.starts_with(Tile::folderPrefix)) {
        const std::string_view text = tileID.substr(Tile::folderPrefix.size());
        const auto id = Uuid::parse(text);
        // Identities are compared as texts: another spelling of the UUID is another identity.
        return id && id->string() == text ? indexOfFolder(tiles, *id) : std::nullopt;
    }
    if (!tileID.starts_with(Tile::appPrefix)) {
        return std::nullopt;
    }
    const std::string_view wanted = tileID.substr(Tile::appPrefix.size());
    const auto found = std::ranges::find_if(tiles, [&](const Tile& tile) {
        const BundleID* app = tile.app();
        return app != nullptr && *app == wanted;
    });
    if (found == tiles.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - tiles.begin());
}

std::vector<BundleID> Board::reconcile(const std::vector<BundleID>& installed) {
    // Whether each installed app stands on the board; and the entries in the order given.
    std::unordered_map<std::string_view, bool> placed;
    std::vector<decltype(placed)::value_type*> inOrder;
    placed.reserve(installed.size());
    inOrder.reserve(installed.size());
    for (const BundleID& app : installed) {
        const auto [entry, isNew] = placed.emplace(app, false);
        if (isNew) {
            inOrder.push_back(&*entry);
        }
    }
    removeApps(tiles, [&](const BundleID& app, std::size_t) {
        const auto found = placed.find(app);
        if (found == placed.end()) {
            return true;
        }
        found->second = true;
        return false;
    });
    std::vector<BundleID> added;
    for (const auto* entry : inOrder) {
        if (!entry->second) {
            tiles.emplace_back(BundleID(entry->first));
            added.emplace_back(entry->first);
        }
    }
    const auto isGone = [&](const auto& entry) { return !placed.contains(entry.first); };
    std::erase_if(renames, isGone);
    std::erase_if(icons, isGone);
    return added;
}

bool Board::remove(std::string_view app) {
    const auto place = locate(app);
    if (!place) {
        return false;
    }
    Folder* folder = tiles[place->tile].folder();
    if (folder != nullptr && folder->apps.size() > 1) {
        folder->apps.erase(folder->apps.begin() + static_cast<std::ptrdiff_t>(*place->inFolder));
    } else {
        eraseAt(tiles, place->tile);
    }
    return true;
}

void Board::moveTile(std::string_view tileID, std::ptrdiff_t index) {
    const auto from = indexOfTile(tileID);
    if (!from) {
        return;
    }
    Tile tile = std::move(tiles[*from]);
    eraseAt(tiles, *from);
    insertAt(tiles, std::cmp_less(*from, index) ? index - 1 : index, std::move(tile));
}

void Board::moveAppToTopLevel(BundleID app, std::ptrdiff_t index) {
    const auto place = locate(app);
    if (!place) {
        return;
    }
    // What stood before `index` moves up by one when a whole tile before it goes.
    const std::size_t count = tiles.size();
    remove(app);
    const bool tileWent = tiles.size() < count;
    const bool movesUp = tileWent && std::cmp_less(place->tile, index);
    insertAt(tiles, movesUp ? index - 1 : index, Tile(std::move(app)));
}

std::optional<Uuid> Board::drop(BundleID app, std::string_view ontoTileID,
                                std::string_view folderTitle, const UuidSource& uuids) {
    const bool onItself =
        ontoTileID.starts_with(Tile::appPrefix) && ontoTileID.substr(Tile::appPrefix.size()) == app;
    auto target = indexOfTile(ontoTileID);
    if (onItself || !target) {
        return std::nullopt;
    }
    // Taking the app out would take its folder, the target, with it, and the app would be nowhere.
    const Folder* onto = tiles[*target].folder();
    if (onto != nullptr && onto->apps.size() == 1 && onto->apps.front() == app) {
        return std::nullopt;
    }
    remove(app);
    target = indexOfTile(ontoTileID); // it may have moved up
    if (!target) {
        return std::nullopt;
    }
    Tile& tile = tiles[*target];
    if (Folder* folder = tile.folder()) {
        folder->apps.push_back(std::move(app));
        return folder->id;
    }
    const Uuid id = uuids();
    tile = Tile(
        Folder{.id = id, .title = std::string(folderTitle), .apps = {*tile.app(), std::move(app)}});
    return id;
}

// By value: the list may be one of this board's own, which changes below.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
std::optional<Uuid> Board::makeFolder(std::vector<BundleID> apps, std::string_view title,
                                      const UuidSource& uuids) {
    // Where each wanted app stood, nothing for one that is not on the board; and the entries in the
    // order given.
    std::unordered_map<std::string_view, std::optional<std::size_t>> places;
    std::vector<decltype(places)::value_type*> inOrder;
    places.reserve(apps.size());
    inOrder.reserve(apps.size());
    for (const BundleID& app : apps) {
        const auto [entry, isNew] = places.emplace(app, std::nullopt);
        if (isNew) {
            inOrder.push_back(&*entry);
        }
    }
    removeApps(tiles, [&](const BundleID& app, std::size_t index) {
        const auto wanted = places.find(app);
        if (wanted == places.end()) {
            return false;
        }
        wanted->second = wanted->second ? wanted->second : index;
        return true;
    });
    Folder folder{.id = {}, .title = std::string(title), .apps = {}};
    std::optional<std::size_t> first;
    for (const auto* entry : inOrder) {
        if (entry->second) {
            first = first ? first : entry->second;
            folder.apps.emplace_back(entry->first);
        }
    }
    if (!first) {
        return std::nullopt;
    }
    const Uuid id = uuids();
    folder.id = id;
    insertAt(tiles, static_cast<std::ptrdiff_t>(*first), Tile(std::move(folder)));
    return id;
}

void Board::updateFolder(const Uuid& id, const std::function<void(Folder&)>& edit) {
    const auto index = indexOfFolder(tiles, id);
    if (!index) {
        return;
    }
    Folder& stored = *tiles[*index].folder();
    Folder edited = stored;
    edit(edited);
    edited.id = stored.id;
    if (edited.apps != stored.apps) {
        AppSet wanted(edited.apps.begin(), edited.apps.end());
        eachApp(tiles, [&](const BundleID& app, std::size_t tile) {
            if (tile != *index) {
                wanted.erase(app);
            }
        });
        std::vector<BundleID> apps;
        for (const BundleID& app : edited.apps) {
            if (wanted.erase(app) > 0) {
                apps.push_back(app);
            }
        }
        edited.apps = std::move(apps);
    }
    if (edited.apps.empty()) {
        eraseAt(tiles, *index);
    } else {
        stored = std::move(edited);
    }
}

void Board::dissolveFolder(const Uuid& id) {
    const auto index = indexOfFolder(tiles, id);
    if (!index) {
        return;
    }
    std::vector<BundleID> apps = std::move(tiles[*index].folder()->apps);
    std::vector<Tile> opened;
    opened.reserve(apps.size());
    for (BundleID& app : apps) {
        opened.emplace_back(std::move(app));
    }
    const auto place = tiles.erase(tiles.begin() + static_cast<std::ptrdiff_t>(*index));
    tiles.insert(place, std::move_iterator(opened.begin()), std::move_iterator(opened.end()));
}

void Board::dissolveAll() {
    std::vector<Tile> opened;
    for (BundleID& app : allApps()) {
        opened.emplace_back(std::move(app));
    }
    tiles = std::move(opened);
}

void Board::sortBy(const std::function<std::string(const BundleID&)>& name,
                   const Text::Collator& collator) {
    std::vector<std::string> names;
    names.reserve(tiles.size());
    for (const Tile& tile : tiles) {
        const Folder* folder = tile.folder();
        names.push_back(folder != nullptr ? folder->title : name(*tile.app()));
    }
    arrange(tiles, collator.sortedOrder(names));
}

void Board::sortByUse(const std::function<std::int64_t(const BundleID&)>& uses) {
    std::vector<std::int64_t> scores;
    scores.reserve(tiles.size());
    for (const Tile& tile : tiles) {
        if (const Folder* folder = tile.folder()) {
            const auto counts = folder->apps | std::views::transform(uses);
            scores.push_back(counts.empty() ? 0 : std::ranges::max(counts));
        } else {
            scores.push_back(uses(*tile.app()));
        }
    }
    std::vector<std::size_t> order(tiles.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
        return scores[a] != scores[b] ? scores[a] > scores[b] : a < b;
    });
    arrange(tiles, std::move(order));
}

void toJson(json::Value& object, const Board& board) {
    json::write(object, "tiles", board.tiles);
    json::write(object, "hidden", board.hidden);
    json::write(object, "renames", board.renames);
    json::write(object, "icons", board.icons);
}

void fromJson(const json::Value& object, Board& board) {
    json::require(object, "tiles", board.tiles);
    json::readIfPresent(object, "hidden", board.hidden);
    json::readIfPresent(object, "renames", board.renames);
    json::readIfPresent(object, "icons", board.icons);
}

} // namespace vellory
