// SPDX-License-Identifier: Apache-2.0
#include "model/TileMenu.h"

#include <algorithm>
#include <utility>

#include "model/AppModel.h"
#include "model/LauncherState.h"

namespace vellory {

namespace {

struct FolderTint {
    const char* id;   ///< as stored
    const char* name; ///< as shown
};

/// In the order of the menu.
const std::vector<FolderTint> folderTints = {
    {"red", "Red"},   {"orange", "Orange"}, {"yellow", "Yellow"}, {"green", "Green"},
    {"teal", "Teal"}, {"blue", "Blue"},     {"indigo", "Indigo"}, {"purple", "Purple"},
    {"pink", "Pink"}, {"brown", "Brown"},   {"gray", "Grey"},     {"graphite", "Graphite"},
};

MenuEntry entry(std::string text, std::string symbol, std::function<void()> action) {
    return {.text = std::move(text), .symbol = std::move(symbol), .action = std::move(action)};
}

/// A line between groups; none where a group is empty.
void separate(Menu& menu) {
    if (!menu.empty() && menu.back().kind != MenuEntry::Kind::separator) {
        menu.push_back(MenuEntry::separator());
    }
}

MenuEntry submenu(std::string text, std::string symbol, Menu entries) {
    return {.kind = MenuEntry::Kind::submenu,
            .text = std::move(text),
            .symbol = std::move(symbol),
            .entries = std::move(entries)};
}

} // namespace

Menu TileMenu::forTile(const Tile& tile) const {
    return tile.app() != nullptr ? forApp(*tile.app()) : forFolder(*tile.folder());
}

Menu TileMenu::forApp(const BundleID& id) const {
    Menu menu;
    addAppActions(id, menu);
    separate(menu);

    if (isShown(Tile(id))) {
        menu.push_back(entry("Rename…", "pencil",
                             [&state = state_, id] { state.beginRenaming(Tile(id).id()); }));
    }
    menu.push_back(entry("Choose icon…", "photo", [&model = model_, id] { model.chooseIcon(id); }));
    if (model_.board().icons.contains(id)) {
        menu.push_back(entry("Reset icon", "arrow.counterclockwise",
                             [&model = model_, id] { model.resetIcon(id); }));
    }
    separate(menu);

    addPlacing(Tile(id), menu);
    separate(menu);

    const std::vector<BundleID> selection = state_.selection();
    const bool isSelected = std::ranges::find(selection, id) != selection.end();
    const std::vector<BundleID> meant = isSelected ? selection : std::vector{id};
    const std::string count = std::to_string(meant.size());
    menu.push_back(entry(meant.size() == 1 ? "New folder" : "New folder with " + count + " apps",
                         "folder.badge.plus",
                         [&state = state_, meant] { state.makeFolder(meant); }));
    if (MenuEntry workspaces = addToWorkspace(meant); !workspaces.entries.empty()) {
        menu.push_back(std::move(workspaces));
    }
    menu.push_back(entry(isSelected ? "Deselect" : "Select", "checkmark",
                         [&state = state_, id] { state.toggleSelected(id); }));
    const auto& suggested = model_.learned().smartList().apps();
    if (std::ranges::find(suggested, id) != suggested.end()) {
        menu.push_back(entry("Don't suggest", "xmark.circle.fill",
                             [&model = model_, id] { model.learned().smartList().exclude(id); }));
    }
    menu.push_back(entry(meant.size() == 1 ? "Hide" : "Hide " + count + " apps", "eye.slash",
                         [&model = model_, meant] { model.hide(meant); }));
    return menu;
}

void TileMenu::addAppActions(const BundleID& id, Menu& menu) const {
    menu.push_back(
        entry("Open", "arrow.up.forward.app", [&state = state_, id] { state.activate(Tile(id)); }));
    if (model_.running().contains(id)) {
        menu.push_back(entry("Open another window", "macwindow.badge.plus",
                             [&state = state_, id] { state.activateNew(id); }));
    }
    Menu documents;
    for (const std::filesystem::path& file : model_.learned().recentDocuments(id)) {
        documents.push_back(entry(file.filename().string(), "",
                                  [&state = state_, id, file] { state.openFile(id, file); }));
    }
    if (!documents.empty()) {
        menu.push_back(submenu("Open recent", "clock.arrow.circlepath", std::move(documents)));
    }
    for (const AppAction& action : model_.actions(id)) {
        menu.push_back(entry(action.name, "", [&state = state_, id, actionID = action.id] {
            state.perform(id, actionID);
        }));
    }
}

bool TileMenu::isShown(const Tile& tile) const {
    const auto& items = state_.currentItems();
    return std::ranges::find(items, tile.id(), &Tile::id) != items.end();
}

void TileMenu::addPlacing(const Tile& tile, Menu& menu) const {
    if (state_.searching() || !isShown(tile)) {
        return; // it has no place of its own there
    }
    menu.push_back(entry("Move with the keys", "arrow.left.arrow.right",
                         [&state = state_, id = tile.id()] { state.pickUp(id); }));
    if (state_.openFolder()) {
        menu.push_back(entry("Move out of folder", "arrow.up.left.square",
                             [&model = model_, id = *tile.app()] { model.moveOutOfFolder(id); }));
    } else if (tile.app() != nullptr) {
        if (MenuEntry folders = moveIntoFolder(*tile.app()); !folders.entries.empty()) {
            menu.push_back(std::move(folders));
        }
    }
    menu.push_back(entry("Move to end", "arrow.right.to.line",
                         [&model = model_, id = tile.id()] { model.moveToEnd(id); }));
}

MenuEntry TileMenu::moveIntoFolder(const BundleID& id) const {
    Menu folders;
    for (const Tile& tile : model_.visibleTiles()) {
        if (const Folder* folder = tile.folder()) {
            folders.push_back(
                {.text = folder->title,
                 .symbol = "folder",
                 .tint = folder->color.value_or(""),
                 .action = [&model = model_, id, target = tile.id()] { model.drop(id, target); }});
        }
    }
    return submenu("Move into folder", "folder", std::move(folders));
}

MenuEntry TileMenu::addToWorkspace(const std::vector<BundleID>& ids) const {
    Menu workspaces;
    for (const Workspace& workspace : model_.workspaces().all()) {
        workspaces.push_back(
            entry(workspace.name, workspace.symbol, [&model = model_, id = workspace.id, ids] {
                model.workspaces().addApps(id, ids);
            }));
    }
    return submenu("Add to workspace", "rectangle.3.group", std::move(workspaces));
}

Menu TileMenu::forFolder(const Folder& folder) const {
    const Uuid id = folder.id;
    const Tile tile(folder);
    Menu menu;
    if (state_.openFolder() != id) {
        menu.push_back(entry("Open", "folder", [&state = state_, id] { state.setOpenFolder(id); }));
    }
    menu.push_back(entry("Rename…", "pencil",
                         [&state = state_, tileID = tile.id()] { state.beginRenaming(tileID); }));
    menu.push_back(folderStyle(folder));
    separate(menu);
    if (state_.openFolder() != id) {
        addPlacing(tile, menu);
        separate(menu);
    }
    menu.push_back(entry("Break up folder", "folder.badge.minus",
                         [&model = model_, id] { model.dissolveFolder(id); }));
    menu.push_back(entry("Hide " + std::to_string(folder.apps.size()) +
                             (folder.apps.size() == 1 ? " app" : " apps"),
                         "eye.slash", [&model = model_, apps = folder.apps] { model.hide(apps); }));
    return menu;
}

MenuEntry TileMenu::folderStyle(const Folder& folder) const {
    const Uuid id = folder.id;
    Menu style;
    Menu tints{{.text = "None", .isChecked = !folder.color, .action = [&model = model_, id] {
                    model.setFolderColor(id, std::nullopt);
                }}};
    for (const FolderTint& tint : folderTints) {
        tints.push_back({.text = tint.name,
                         .tint = tint.id,
                         .isChecked = folder.color == tint.id,
                         .action = [&model = model_, id, color = std::string(tint.id)] {
                             model.setFolderColor(id, color);
                         }});
    }
    style.push_back(submenu("Colour", "paintpalette", std::move(tints)));
    style.push_back(
        entry("Emoji…", "face.smiling", [&state = state_, id] { state.chooseEmoji(id); }));
    if (folder.emoji) {
        style.push_back(entry("Remove emoji", "xmark.circle.fill",
                              [&model = model_, id] { model.setFolderEmoji(id, std::nullopt); }));
    }
    style.push_back(
        entry("Cover image…", "photo", [&model = model_, id] { model.chooseCover(id); }));
    if (folder.cover) {
        style.push_back(entry("Remove cover", "xmark.circle.fill",
                              [&model = model_, id] { model.resetCover(id); }));
    }
    return submenu("Folder style", "paintpalette", std::move(style));
}

Menu TileMenu::forBackground() const {
    Menu menu;
    if (const auto selection = state_.selection(); !selection.empty()) {
        const std::string count = std::to_string(selection.size());
        menu.push_back(entry(
            "New folder with " + count + (selection.size() == 1 ? " app" : " apps"),
            "folder.badge.plus", [&state = state_, selection] { state.makeFolder(selection); }));
        menu.push_back(entry("Hide " + count + (selection.size() == 1 ? " app" : " apps"),
                             "eye.slash", [&model = model_, selection] { model.hide(selection); }));
        separate(menu);
    }
    menu.push_back(
        entry("Sort A–Z", "textformat.abc", [&model = model_] { model.sortAlphabetically(); }));
    menu.push_back(entry("Sort by use", "chart.bar", [&model = model_] { model.sortByUse(); }));
    menu.push_back(entry("Auto folders", "folder.badge.gearshape",
                         [&model = model_] { model.autoFolders(); }));
    separate(menu);
    menu.push_back(entry("Workspaces…", "rectangle.3.group",
                         [&state = state_] { state.setPanel(LauncherState::Panel::workspaces); }));
    menu.push_back(entry("Show hidden apps…", "eye",
                         [&state = state_] { state.setPanel(LauncherState::Panel::hiddenApps); }));
    if (model_.hasFilter()) {
        menu.push_back(
            {.text = "Show all apps",
             .symbol = "square.grid.3x3",
             .isChecked = model_.showAllApps(),
             .action = [&model = model_] { model.setShowAllApps(!model.showAllApps()); }});
    }
    menu.push_back(entry("Layout history…", "clock.arrow.circlepath",
                         [&state = state_] { state.setPanel(LauncherState::Panel::history); }));
    separate(menu);
    menu.push_back(entry("Settings…", "gearshape",
                         [&state = state_] { state.setPanel(LauncherState::Panel::settings); }));
    return menu;
}

} // namespace vellory
