// SPDX-License-Identifier: Apache-2.0
#include "shell/workspaces/WorkspacesViewModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Workspaces/WorkspaceTexts.h"
#include "shell/LauncherViewModel.h"
#include "shell/search/ShownText.h"
#include "shell/workspaces/WorkspaceRows.h"

namespace vellory {

namespace {

constexpr std::array lengthsOffered{15, 25, 45, 60, 90};
constexpr double undoSeconds = 8.0;

MenuEntry menuEntry(const QString& text, std::string symbol, std::function<void()> action) {
    return {.text = text.toStdString(), .symbol = std::move(symbol), .action = std::move(action)};
}

} // namespace

WorkspacesViewModel::WorkspacesViewModel(AppModel& model, LauncherState& state,
                                         Scheduler& scheduler, LauncherViewModel& launcher,
                                         QObject* parent)
    : QObject(parent), model_(model), state_(state), launcher_(launcher), rows_(workspaceFields),
      editor_(model), session_(model, state, scheduler) {
    connect(&model_.workspaces(), &WorkspaceList::changed, this, &WorkspacesViewModel::updateRows);
    connect(&model_.workspaces(), &WorkspaceList::activeChanged, this,
            &WorkspacesViewModel::updateRows);
    connect(&model_.workspaceShortcuts(), &WorkspaceShortcuts::changed, this,
            &WorkspacesViewModel::updateRows);
    connect(&state_, &LauncherState::panelChanged, this, [this] {
        if (state_.panel() == LauncherState::Panel::none) {
            editor_.close();
        }
    });
    updateRows();
}

void WorkspacesViewModel::updateRows() {
    rows_.setRows(workspaceRows(model_));
}

const Workspace* WorkspacesViewModel::find(const QString& id) const {
    const auto uuid = Uuid::parse(id.toStdString());
    return uuid ? model_.workspaces().find(*uuid) : nullptr;
}

int WorkspacesViewModel::indexOf(const Uuid& id) const {
    const auto& all = model_.workspaces().all();
    return static_cast<int>(std::ranges::find(all, id, &Workspace::id) - all.begin());
}

// --- Texts ---

QString WorkspacesViewModel::newFromOpenText() const {
    return toQString(WorkspaceTexts::newFromOpen);
}

QStringList WorkspacesViewModel::takeTexts() const {
    return {toQString(WorkspaceTexts::takeWindows), toQString(WorkspaceTexts::takeFolders),
            toQString(WorkspaceTexts::takeTabs)};
}

QString WorkspacesViewModel::asksOnceText() const {
    return toQString(WorkspaceTexts::asksOnce);
}

QString WorkspacesViewModel::allowText() const {
    return toQString(WorkspaceTexts::allowAccessibility);
}

QString WorkspacesViewModel::allowHowText() const {
    return toQString(WorkspaceTexts::allowAccessibilityHow);
}

QString WorkspacesViewModel::sessionText() const {
    return toQString(WorkspaceTexts::focusSession);
}

// --- Opening ---

void WorkspacesViewModel::open(const QString& id) {
    if (const Workspace* workspace = find(id)) {
        model_.open(Workspace(*workspace), std::nullopt);
    }
}

void WorkspacesViewModel::startSession(const QString& id, int minutes) {
    if (const Workspace* workspace = find(id)) {
        model_.open(Workspace(*workspace), std::clamp(minutes, leastMinutes(), mostMinutes()));
    }
}

QVariantList WorkspacesViewModel::sessionLengths() const {
    QVariantList lengths;
    for (const int minutes : lengthsOffered) {
        lengths.append(minutes);
    }
    return lengths;
}

int WorkspacesViewModel::usualMinutes() const {
    return WorkspaceCenter::usualMinutes;
}

int WorkspacesViewModel::leastMinutes() const {
    return WorkspaceCenter::leastMinutes;
}

int WorkspacesViewModel::mostMinutes() const {
    return WorkspaceCenter::mostMinutes;
}

void WorkspacesViewModel::setSessionWorkspace(const QString& id) {
    if (id != sessionWorkspace_) {
        sessionWorkspace_ = id;
        Q_EMIT sessionWorkspaceChanged();
    }
}

// --- Menus ---

void WorkspacesViewModel::showMenu(const QString& id) {
    if (const Workspace* workspace = find(id)) {
        launcher_.menu()->show(menuOf(*workspace));
    }
}

MenuEntry WorkspacesViewModel::sessionMenu(const QString& id) {
    MenuEntry session{.kind = MenuEntry::Kind::submenu,
                      .text = tr("Focus session").toStdString(),
                      .symbol = "timer"};
    for (const int minutes : lengthsOffered) {
        session.entries.push_back(menuEntry(tr("%1 minutes").arg(minutes), "",
                                            [this, id, minutes] { startSession(id, minutes); }));
    }
    session.entries.push_back(menuEntry(tr("Other…"), "", [this, id] { chooseSession(id); }));
    return session;
}

Menu WorkspacesViewModel::menuOf(const Workspace& workspace) {
    const QString id = QString::fromStdString(workspace.id.string());
    const int index = indexOf(workspace.id);
    Menu menu;
    menu.push_back(menuEntry(tr("Open"), "arrow.up.forward.app", [this, id] { open(id); }));
    menu.push_back(sessionMenu(id));
    if (model_.workspaces().active() == workspace.id) {
        menu.push_back(menuEntry(tr("Close"), "xmark.circle.fill", [this] { close(); }));
    }
    menu.push_back(MenuEntry::separator());
    menu.push_back(menuEntry(tr("Edit…"), "pencil", [this, id] { edit(id); }));
    menu.push_back(menuEntry(tr("Duplicate"), "square.on.square", [this, id] { duplicate(id); }));
    MenuEntry restricts = menuEntry(tr("Show only its apps"), "square.grid.3x3", [this, id] {
        if (const Workspace* found = find(id)) {
            Workspace changed = *found;
            changed.focusGrid = !changed.focusGrid;
            model_.updateWorkspace(changed);
        }
    });
    restricts.isChecked = workspace.focusGrid;
    menu.push_back(std::move(restricts));
    menu.push_back(MenuEntry::separator());
    if (index > 0) {
        menu.push_back(menuEntry(tr("Move back"),
                                 launcher_.mirrored() ? "arrow.right" : "arrow.left",
                                 [this, id] { moveBy(id, -1); }));
    }
    if (std::cmp_less(index + 1, model_.workspaces().all().size())) {
        menu.push_back(menuEntry(tr("Move on"), launcher_.mirrored() ? "arrow.left" : "arrow.right",
                                 [this, id] { moveBy(id, 1); }));
    }
    menu.push_back(menuEntry(tr("Delete"), "trash", [this, id] { remove(id); }));
    return menu;
}

void WorkspacesViewModel::showNewMenu() {
    launcher_.menu()->show(
        {menuEntry(tr("New workspace"), "plus", [this] { create(); }),
         menuEntry(newFromOpenText(), "camera.viewfinder", [this] { chooseFromOpen(); }),
         MenuEntry::separator(), menuEntry(tr("Edit workspaces…"), "pencil", [this] {
             state_.setPanel(LauncherState::Panel::workspaces);
         })});
}

// --- Making and changing ---

void WorkspacesViewModel::create() {
    const Uuid made = model_.workspaceCenter().create(tr("New workspace").toStdString());
    edit(QString::fromStdString(made.string()));
}

void WorkspacesViewModel::chooseSession(const QString& id) {
    setSessionWorkspace(id);
    state_.setPanel(LauncherState::Panel::focusSession);
}

void WorkspacesViewModel::chooseFromOpen() {
    state_.setPanel(LauncherState::Panel::workspaceFromOpen);
}

void WorkspacesViewModel::makeFromOpen(bool windows, bool folders, bool tabs) {
    state_.setPanel(LauncherState::Panel::none);
    model_.snapshotWorkspace(
        {.windows = windows, .finder = folders, .tabs = tabs},
        [this](const Workspace& made) { edit(QString::fromStdString(made.id.string())); });
}

void WorkspacesViewModel::edit(const QString& id) {
    if (find(id) != nullptr && state_.presented()) {
        state_.setPanel(LauncherState::Panel::workspaces);
        editor_.open(id);
    }
}

void WorkspacesViewModel::duplicate(const QString& id) {
    if (const Workspace* found = find(id)) {
        const QString name = tr("%1 copy").arg(QString::fromStdString(found->name));
        model_.workspaceCenter().duplicate(Uuid(found->id), name.toStdString());
    }
}

void WorkspacesViewModel::remove(const QString& id) {
    const Workspace* found = find(id);
    if (found == nullptr) {
        return;
    }
    const Workspace gone = *found;
    const int index = indexOf(gone.id);
    const std::string shortcut = model_.workspaceShortcuts().shortcut(gone.id);
    model_.deleteWorkspace(gone.id);
    launcher_.notices()->postUndoable(
        {tr("“%1” deleted").arg(oneLine(gone.name)).toStdString(), "trash", undoSeconds},
        [this, gone, index, shortcut] { restore(gone, index, shortcut); });
}

void WorkspacesViewModel::restore(const Workspace& workspace, int index,
                                  const std::string& shortcut) {
    model_.updateWorkspace(workspace);
    model_.workspaces().move(workspace.id, index);
    if (!shortcut.empty()) {
        model_.workspaceShortcuts().setShortcut(workspace.id, shortcut);
    }
    if (model_.session() && model_.session()->workspace == workspace.id) {
        model_.workspaces().setActive(workspace.id);
    }
}

void WorkspacesViewModel::addTile(const QString& id, const QString& tileId) {
    const Workspace* workspace = find(id);
    if (workspace == nullptr) {
        return;
    }
    const std::string tile = tileId.toStdString();
    const auto& tiles = model_.visibleTiles();
    const auto shown = std::ranges::find(tiles, tile, &Tile::id);
    std::vector<BundleID> apps;
    if (shown != tiles.end() && shown->folder() != nullptr) {
        apps = shown->folder()->apps;
    } else if (tile.starts_with(Tile::appPrefix)) {
        apps = {tile.substr(Tile::appPrefix.size())};
    }
    const auto before = workspace->items.size();
    const Uuid uuid = workspace->id;
    model_.workspaces().addApps(uuid, apps);
    workspace = model_.workspaces().find(uuid);
    const auto added = workspace == nullptr ? 0 : workspace->items.size() - before;
    if (workspace != nullptr && editor_.workspace() != id) {
        const QString name = oneLine(workspace->name);
        launcher_.notices()->post(Notice::confirmation(
            (added == 0 ? tr("Already in “%1”") : tr("Added to “%1”")).arg(name).toStdString(),
            workspace->symbol));
    }
}

void WorkspacesViewModel::move(const QString& id, int index) {
    if (const Workspace* workspace = find(id)) {
        model_.workspaces().move(Uuid(workspace->id), index);
    }
}

void WorkspacesViewModel::moveBy(const QString& id, int places) {
    if (const Workspace* workspace = find(id)) {
        move(id, std::max(0, indexOf(workspace->id) + places));
    }
}

void WorkspacesViewModel::checkPermission(bool prompt) {
    const bool can = model_.workspaceCenter().canPlaceWindows(prompt);
    if (can != canPlaceWindows_) {
        canPlaceWindows_ = can;
        Q_EMIT permissionChanged();
    }
}

void WorkspacesViewModel::setChoosingFiles(bool on) {
    if (on != choosingFiles_) {
        choosingFiles_ = on;
        Q_EMIT choosingFilesChanged();
    }
}

} // namespace vellory
