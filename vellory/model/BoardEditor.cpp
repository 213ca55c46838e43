// SPDX-License-Identifier: Apache-2.0
#include "model/BoardEditor.h"

#include <array>
#include <cstdio>
#include <set>
#include <tuple>
#include <utility>

#include <QPointer>

#include "Board/AutoFolders.h"
#include "Board/LayoutTexts.h"
#include "Support/Text.h"
#include "platform/AppCatalogue.h"
#include "platform/ImageChooser.h"

namespace vellory {

namespace {

/// Smaller categories get no folder of their own.
constexpr std::size_t leastAppsInAutoFolder = 2;

/// Such as "2026-11-21 08:34".
std::string dateText(Date date, const Calendar& calendar) {
    const auto parts = calendar.components(date);
    if (!parts) {
        return "an unknown date";
    }
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d", parts->year, parts->month,
                  parts->day, parts->hour, parts->minute);
    return text.data();
}

} // namespace

BoardEditor::BoardEditor(Parts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)), icons_(parts_.environment.paths.icons()),
      layouts_(parts_.environment.paths.savedLayouts()) {}

Board BoardEditor::autoFolderBoard() const {
    return AutoFolders::boardFor(
        parts_.library.installedApps(), leastAppsInAutoFolder,
        [this](const InstalledApp& app) { return parts_.ports.catalogue.category(app); },
        parts_.library.collator(), parts_.environment.newID);
}

// --- Tiles and folders ---

void BoardEditor::moveTile(const std::string& tileID, int place) {
    edit("Moved", "arrow.left.arrow.right",
         [&](Board& next) { next.moveTile(tileID, parts_.grid.boardIndex(next, place)); });
}

void BoardEditor::moveApp(const BundleID& id, int place) {
    const auto from = parts_.document.board().locate(id);
    const bool fromFolder = from && from->inFolder;
    edit(fromFolder ? "Moved out of folder" : "Moved", "arrow.left.arrow.right",
         [&](Board& next) { next.moveAppToTopLevel(id, parts_.grid.boardIndex(next, place)); });
}

void BoardEditor::moveOutOfFolder(const BundleID& id) {
    const auto from = parts_.document.board().locate(id);
    if (from && from->inFolder) {
        edit("Moved out of folder", "arrow.left.arrow.right", [&](Board& next) {
            next.moveAppToTopLevel(id, static_cast<std::ptrdiff_t>(from->tile) + 1);
        });
    }
}

void BoardEditor::moveInFolder(const Uuid& folder, const BundleID& id, int place) {
    if (parts_.grid.folder(folder)) {
        editFolder(folder, "Moved", "arrow.left.arrow.right",
                   [&](Folder& each) { parts_.grid.moveWithin(each.apps, id, place); });
    }
}

void BoardEditor::moveToEnd(const std::string& tileID) {
    edit("Moved to end", "arrow.right.to.line", [&](Board& next) {
        const auto end = std::ssize(next.tiles);
        if (next.indexOfTile(tileID) || !tileID.starts_with(Tile::appPrefix)) {
            next.moveTile(tileID, end);
        } else {
            next.moveAppToTopLevel(tileID.substr(Tile::appPrefix.size()), end);
        }
    });
}

std::optional<Uuid> BoardEditor::drop(const BundleID& id, const std::string& targetTileID,
                                      const std::string& newFolderTitle) {
    Board next = parts_.document.board();
    if (!next.locate(id)) {
        return std::nullopt;
    }
    const bool ontoApp = targetTileID.starts_with(Tile::appPrefix);
    const auto folder = next.drop(id, targetTileID, newFolderTitle, parts_.environment.newID);
    if (!folder) {
        // The only app of a folder on that very folder: taking it out removed the target, so this
        // board must not be kept.
        return std::nullopt;
    }
    const std::string reason = ontoApp ? "Made a folder" : "Moved";
    commit(std::move(next), reason, Notice::confirmation(reason, "folder"));
    return folder;
}

std::optional<Uuid> BoardEditor::makeFolder(const std::vector<BundleID>& ids,
                                            const std::string& title) {
    std::optional<Uuid> folder;
    edit("New folder", "folder.badge.plus",
         [&](Board& next) { folder = next.makeFolder(ids, title, parts_.environment.newID); });
    return folder;
}

void BoardEditor::renameFolder(const Uuid& folder, const std::string& title) {
    const std::string trimmed(Text::trimmed(title));
    if (!trimmed.empty()) {
        editFolder(folder, "Renamed folder", "pencil", [&](Folder& each) { each.title = trimmed; });
    }
}

void BoardEditor::setFolderColor(const Uuid& folder, const std::optional<std::string>& color) {
    editFolder(folder, "Folder colour", "paintpalette", [&](Folder& each) { each.color = color; });
}

void BoardEditor::setFolderEmoji(const Uuid& folder, const std::optional<std::string>& emoji) {
    editFolder(folder, "Folder icon", "face.smiling", [&](Folder& each) { each.emoji = emoji; });
}

void BoardEditor::dissolveFolder(const Uuid& folder) {
    if (const Folder* known = parts_.document.board().folder(folder)) {
        edit("Broke up " + known->title, "folder.badge.minus",
             [&](Board& next) { next.dissolveFolder(folder); });
    }
}

// --- Apps ---

void BoardEditor::hide(const std::vector<BundleID>& ids) {
    Board next = parts_.document.board();
    std::vector<BundleID> newlyHidden;
    for (const BundleID& id : ids) {
        if (next.hidden.insert(id).second) {
            newlyHidden.push_back(id);
        }
    }
    if (newlyHidden.empty()) {
        return;
    }
    const std::string reason = newlyHidden.size() == 1
                                   ? "Hid " + parts_.library.name(newlyHidden.front())
                                   : "Hid " + std::to_string(newlyHidden.size()) + " apps";
    commit(std::move(next), reason, Notice::confirmation(reason, "eye.slash"));
}

void BoardEditor::unhide(const BundleID& id) {
    edit("Showed " + parts_.library.name(id), "eye", [&](Board& next) { next.hidden.erase(id); });
}

void BoardEditor::rename(const BundleID& id, const std::string& name) {
    const InstalledApp* installed = parts_.library.app(id);
    if (installed == nullptr) {
        return;
    }
    const std::string trimmed(Text::trimmed(name));
    const bool isOwnName = trimmed.empty() || trimmed == installed->name;
    edit("Renamed " + (isOwnName ? installed->name : trimmed), "pencil", [&](Board& next) {
        if (isOwnName) {
            next.renames.erase(id);
        } else {
            next.renames[id] = trimmed;
        }
    });
}

void BoardEditor::chooseIcon(const BundleID& id) {
    if (parts_.library.app(id) == nullptr) {
        return;
    }
    parts_.ports.imageChooser.chooseImage(
        "Icon for " + parts_.library.name(id),
        [self = QPointer(this), id](const std::filesystem::path& picture) {
            // The app may have gone while the user was choosing.
            if (!self || self->parts_.library.app(id) == nullptr) {
                return;
            }
            if (const auto path = self->pathOf(self->icons_.addIcon(id, picture))) {
                self->usePicture("Icon for " + self->parts_.library.name(id),
                                 [&](Board& next) { next.icons[id] = *path; });
            }
        });
}

void BoardEditor::resetIcon(const BundleID& id) {
    edit("Reset icon for " + parts_.library.name(id), "photo",
         [&](Board& next) { next.icons.erase(id); });
}

void BoardEditor::chooseCover(const Uuid& folder) {
    const Folder* known = parts_.document.board().folder(folder);
    if (known == nullptr) {
        return;
    }
    parts_.ports.imageChooser.chooseImage(
        "Cover for " + known->title,
        [self = QPointer(this), folder](const std::filesystem::path& picture) {
            if (!self || self->parts_.document.board().folder(folder) == nullptr) {
                return;
            }
            if (const auto path = self->pathOf(self->icons_.addCover(folder, picture))) {
                self->usePicture("Folder cover", [&](Board& next) {
                    next.updateFolder(folder, [&](Folder& each) { each.cover = *path; });
                });
            }
        });
}

void BoardEditor::resetCover(const Uuid& folder) {
    editFolder(folder, "Folder cover", "photo", [](Folder& each) { each.cover.reset(); });
}

std::optional<std::string> BoardEditor::pathOf(const Added& added) {
    if (!added) {
        parts_.notices.post(Notice::error("Couldn't use the picture: " + added.error().message()));
        return std::nullopt;
    }
    return added->string();
}

void BoardEditor::usePicture(const std::string& reason, const std::function<void(Board&)>& change) {
    Board next = parts_.document.board();
    change(next);
    switch (parts_.document.change(std::move(next), reason)) {
    case BoardDocument::Change::unsaved:
        return; // That says so itself.
    case BoardDocument::Change::none:
        Q_EMIT pictureReplaced();
        break;
    case BoardDocument::Change::saved:
        forgetUnusedPictures();
        break;
    }
    parts_.notices.post(Notice::confirmation(reason, "photo"));
}

void BoardEditor::forgetUnusedPictures() const {
    std::set<std::string> used;
    const auto use = [&](const Board& board) {
        for (const auto& [app, icon] : board.icons) {
            used.insert(std::filesystem::path(icon).filename().string());
        }
        for (const Tile& tile : board.tiles) {
            if (const Folder* folder = tile.folder(); folder != nullptr && folder->cover) {
                used.insert(std::filesystem::path(*folder->cover).filename().string());
            }
        }
    };
    std::vector<std::optional<Board>> boards{parts_.document.board()};
    for (const BoardStore::Snapshot& snapshot : parts_.document.snapshots()) {
        boards.push_back(parts_.document.boardIn(snapshot));
    }
    for (const std::string& name : savedLayouts()) {
        boards.push_back(layouts_.load(name));
    }
    for (const std::optional<Board>& board : boards) {
        if (!board) {
            return; // Nobody knows what it shows.
        }
        use(*board);
    }
    icons_.keepOnly(used);
}

// --- The whole board ---

void BoardEditor::autoFolders() {
    if (parts_.library.installedOrder().empty()) {
        return; // As for `AppLibrary::bringInStep`: nothing could be read.
    }
    edit("Auto folders", "folder.badge.gearshape",
         [&](Board& next) { next.tiles = autoFolderBoard().tiles; });
}

void BoardEditor::sortAlphabetically() {
    edit("Sorted A–Z", "textformat.abc", [&](Board& next) {
        next.sortBy([this](const BundleID& id) { return parts_.library.displayName(id); },
                    parts_.library.collator());
    });
}

void BoardEditor::layOutAlphabetically() {
    edit("Sorted A–Z", "textformat.abc", [&](Board& next) {
        next.dissolveAll();
        next.sortBy([this](const BundleID& id) { return parts_.library.displayName(id); },
                    parts_.library.collator());
    });
}

void BoardEditor::sortByUse() {
    edit("Sorted by use", "chart.bar", [&](Board& next) {
        next.sortByUse([this](const BundleID& id) { return parts_.usage.count(id); });
    });
}

void BoardEditor::restore(const BoardStore::Snapshot& snapshot) {
    std::optional<Board> earlier = parts_.document.boardIn(snapshot);
    if (!earlier) {
        return;
    }
    // Apps have come and gone since; a later scan that finds nothing new would not notice.
    std::ignore = parts_.library.bringInStep(*earlier);
    // A change that cannot be saved says so itself; a board that is as it was then is restored too.
    if (parts_.document.change(*std::move(earlier),
                               "Restored " +
                                   dateText(snapshot.date, parts_.environment.calendar)) !=
        BoardDocument::Change::unsaved) {
        parts_.notices.post(Notice::confirmation("Layout restored", "clock.arrow.circlepath"));
    }
}

void BoardEditor::saveLayout(const std::string& name) {
    const auto saved = layouts_.save(parts_.document.board(), name);
    parts_.notices.post(saved ? Notice::confirmation(LayoutTexts::saved(name),
                                                     std::string(LayoutTexts::savedSymbol))
                              : Notice::error(LayoutTexts::couldNotSave(saved.error().message())));
}

void BoardEditor::loadSavedLayout(const std::string& name) {
    std::optional<Board> kept = layouts_.load(name);
    if (!kept) {
        parts_.notices.post(Notice::error(LayoutTexts::missing(name)));
        return;
    }
    // A change that cannot be saved says so itself.
    const bool isUnsaved = *kept != parts_.document.board() &&
                           parts_.document.change(*kept, LayoutTexts::switchedTo(name)) ==
                               BoardDocument::Change::unsaved;
    Board inStep = *std::move(kept);
    std::ignore = parts_.library.bringInStep(inStep);
    parts_.document.change(std::move(inStep), std::nullopt);
    if (!isUnsaved) {
        parts_.notices.post(Notice::confirmation(LayoutTexts::switchedTo(name)));
    }
}

std::vector<std::string> BoardEditor::savedLayouts() const {
    return layouts_.names(parts_.library.collator());
}

void BoardEditor::edit(const std::string& reason, const char* symbol,
                       const std::function<void(Board&)>& change) {
    Board next = parts_.document.board();
    change(next);
    commit(std::move(next), reason, Notice::confirmation(reason, symbol));
}

void BoardEditor::editFolder(const Uuid& folder, const std::string& reason, const char* symbol,
                             const std::function<void(Folder&)>& change) {
    edit(reason, symbol, [&](Board& next) { next.updateFolder(folder, change); });
}

void BoardEditor::commit(Board next, const std::string& reason, const Notice& notice) {
    if (parts_.document.change(std::move(next), reason) == BoardDocument::Change::saved) {
        parts_.notices.post(notice);
    }
}

} // namespace vellory
