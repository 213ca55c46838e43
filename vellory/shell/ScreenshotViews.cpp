// SPDX-License-Identifier: Apache-2.0
#include "shell/ScreenshotViews.h"

#include <algorithm>

#include <QMouseEvent>

#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "shell/LauncherController.h"
#include "shell/WaitFor.h"
#include "shell/grid/TileGrid.h"

namespace vellory {

namespace {

using Scene = ScreenshotView::Scene;
using Arranged = ScreenshotView::Arranged;
using Panel = LauncherState::Panel;

Arranged asItIs(const Scene&) {
    return {};
}

const Tile* firstFolder(const AppModel& model) {
    const auto& tiles = model.visibleTiles();
    const auto folder =
        std::ranges::find_if(tiles, [](const Tile& tile) { return tile.folder() != nullptr; });
    return folder == tiles.end() ? nullptr : &*folder;
}

Arranged openFolder(const Scene& scene) {
    const Tile* folder = firstFolder(scene.model);
    if (folder == nullptr) {
        return std::unexpected("There is no folder on the grid to show.");
    }
    scene.state.setOpenFolder(folder->folder()->id);
    return {};
}

Arranged openEmojiOfFolder(const Scene& scene) {
    const Tile* folder = firstFolder(scene.model);
    if (folder == nullptr) {
        return std::unexpected("There is no folder on the grid to show.");
    }
    scene.state.chooseEmoji(folder->folder()->id);
    return {};
}

/// What an arrangement has to say is not part of the picture.
void letNoticesGo(const Scene& scene) {
    waitFor([&] { return scene.controller.viewModel().notices()->rowCount() == 0; });
}

Arranged openHistory(const Scene& scene) {
    // So that there is something to go back to.
    scene.model.sortAlphabetically();
    scene.model.autoFolders();
    letNoticesGo(scene);
    scene.state.setPanel(Panel::history);
    return {};
}

template <Panel panel>
Arranged open(const Scene& scene) {
    scene.state.setPanel(panel);
    return {};
}

/// A page of the settings, counted from 0 as they stand in their list.
template <int page>
Arranged openSettings(const Scene& scene) {
    scene.controller.settings().setPage(page);
    return open<Panel::settings>(scene);
}

Arranged search(const Scene& scene, const char* typed) {
    scene.state.setQuery(typed);
    return {};
}

Arranged needRow(const Scene& scene) {
    return scene.controller.suggestions().row().empty()
               ? Arranged(std::unexpected("No apps are suggested yet."))
               : Arranged();
}

Arranged needHabit(const Scene& scene) {
    const bool isOffered =
        waitFor([&] { return scene.controller.suggestions().offered().has_value(); });
    return isOffered ? Arranged() : Arranged(std::unexpected("There is no habit to offer."));
}

/// The grid as one list, some rows down.
Arranged scrollList(const Scene& scene) {
    scene.model.prefs().setDisplayMode(Prefs::DisplayMode::list);
    scene.state.handleScroll({.dy = -1.5});
    return {};
}

// --- Workspaces ---

Arranged needWorkspaces(const Scene& scene) {
    return scene.model.workspaces().all().empty()
               ? Arranged(std::unexpected("There are no workspaces yet."))
               : Arranged();
}

/// What is done with the first workspace, where there is one.
template <auto act>
Arranged withWorkspace(const Scene& scene) {
    Arranged needed = needWorkspaces(scene);
    if (needed) {
        act(scene);
    }
    return needed;
}

QString firstWorkspace(const Scene& scene) {
    return QString::fromStdString(scene.model.workspaces().all().front().id.string());
}

void listWorkspaces(const Scene& scene) {
    scene.state.setPanel(Panel::workspaces);
}

void editWorkspace(const Scene& scene) {
    scene.controller.workspaces().edit(firstWorkspace(scene));
}

void chooseSession(const Scene& scene) {
    scene.controller.workspaces().chooseSession(firstWorkspace(scene));
}

void chooseFromOpen(const Scene& scene) {
    scene.controller.workspaces().chooseFromOpen();
}

/// Begins a focus session of a workspace without touching the desk: one that opens nothing.
void pretendSession(const Scene& scene) {
    constexpr int minutes = 25;
    Workspace empty = scene.model.workspaces().all().front();
    empty.items.clear();
    empty.windows.clear();
    empty.others = Workspace::Others::keep;
    scene.model.open(empty, minutes);
    scene.controller.prepare(scene.size);
    letNoticesGo(scene);
}

// --- What needs the view to be there ---

void openMenu(const Scene& scene) {
    const Tile* folder = firstFolder(scene.model);
    const auto& tiles = scene.model.visibleTiles();
    scene.state.requestMenu(folder == nullptr ? 0 : static_cast<int>(folder - tiles.data()));
}

void movePointer(QQuickWindow& window, QEvent::Type type, QPointF to) {
    const bool isDown = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, to, window.mapToGlobal(to),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

/// Picks up one tile and holds it between two others, as the pointer does.
void dragSomeTile(const Scene& scene) {
    QQuickWindow& window = scene.controller.window();
    auto* grid = window.contentItem()->findChild<TileGrid*>("grid");
    const auto& items = grid->tiles()->items();
    const auto app = std::ranges::find(items, false, &TileItem::isFolder);
    if (app == items.end()) {
        return;
    }
    const auto middleOf = [&](int index) {
        return grid->mapToScene(grid->tileRect(grid->tileIdAt(index)).center());
    };
    constexpr int steps = 12;
    const int at = static_cast<int>(app - items.begin());
    const QPointF from = middleOf(at);
    const QPointF to =
        middleOf(std::max(0, at - 6)) + QPointF(grid->tileRect(app->id).width() / 2, 30);
    movePointer(window, QEvent::MouseButtonPress, from);
    for (int step = 1; step <= steps; ++step) {
        movePointer(window, QEvent::MouseMove, from + (to - from) * step / steps);
    }
}

constexpr ScreenshotView views[]{
    {"grid", asItIs},
    {"grid-dark", asItIs, nullptr, true},
    {"list", scrollList},
    {"folder", openFolder},
    {"context-menu", asItIs, openMenu},
    {"history", openHistory},
    {"hidden-apps", open<Panel::hiddenApps>},
    {"folder-emoji", openEmojiOfFolder},
    {"dragging", asItIs, dragSomeTile},
    {"search", [](const Scene& scene) { return search(scene, "photo"); }},
    {"calculator", [](const Scene& scene) { return search(scene, "12*7"); }},
    {"emoji", [](const Scene& scene) { return search(scene, ":heart"); }},
    {"no-results", [](const Scene& scene) { return search(scene, "qqqq"); }},
    {"smart-row", needRow},
    {"habit-bar", needHabit},
    {"settings", openSettings<1>},
    {"settings-general", openSettings<0>},
    {"settings-suggestions", openSettings<2>},
    {"settings-unused", openSettings<3>},
    {"workspace-strip", needWorkspaces},
    {"workspace-list", withWorkspace<listWorkspaces>},
    {"workspace-editor", withWorkspace<editWorkspace>},
    {"workspace-from-open", withWorkspace<chooseFromOpen>},
    {"focus-session", withWorkspace<pretendSession>},
    {"new-focus-session", withWorkspace<chooseSession>},
};

} // namespace

std::span<const ScreenshotView> ScreenshotView::all() {
    return views;
}

const ScreenshotView* ScreenshotView::named(const QString& name) {
    const auto* const view = std::ranges::find_if(
        views, [&](const ScreenshotView& each) { return name == QLatin1String(each.name); });
    return view == std::end(views) ? nullptr : view;
}

QStringList ScreenshotView::names() {
    QStringList names;
    for (const ScreenshotView& view : views) {
        names.append(QLatin1String(view.name));
    }
    return names;
}

} // namespace vellory
