// SPDX-License-Identifier: Apache-2.0
#include "shell/Screenshot.h"

#include <algorithm>
#include <map>
#include <set>

#include <QBuffer>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QQuickItem>

#include "Support/AtomicFile.h"
#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "shell/LauncherController.h"
#include "shell/TileGrid.h"

namespace vellory {

namespace {

constexpr int pictureDeadlineMilliseconds = 15'000;

/// Whether some picture in the scene is still to come, or some tile still on its way.
bool isBusy(const QQuickItem& item) {
    constexpr int loadingStatus = 2; // Image.Loading
    const QVariant status = item.property("status");
    if (item.isVisible() && status.isValid() && item.property("sourceSize").isValid() &&
        status.toInt() == loadingStatus) {
        return true;
    }
    if (item.isVisible() && item.property("settling").toBool()) {
        return true;
    }
    return std::ranges::any_of(item.childItems(),
                               [](const QQuickItem* child) { return isBusy(*child); });
}

/// Lets events run until `done`, or until patience ends.
template <class Condition>
bool waitFor(Condition done) {
    const QDeadlineTimer deadline(pictureDeadlineMilliseconds);
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

const Tile* firstFolder(const AppModel& model) {
    const auto& tiles = model.visibleTiles();
    const auto folder =
        std::ranges::find_if(tiles, [](const Tile& tile) { return tile.folder() != nullptr; });
    return folder == tiles.end() ? nullptr : &*folder;
}

void movePointer(QQuickWindow& window, QEvent::Type type, QPointF to) {
    const bool isDown = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, to, window.mapToGlobal(to),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

/// Picks up one tile and holds it between two others, as the pointer does.
void dragSomeTile(QQuickWindow& window, TileGrid& grid) {
    const auto middleOf = [&](int index) {
        return grid.mapToScene(grid.tileRect(grid.tileIdAt(index)).center());
    };
    constexpr int steps = 12;
    const auto& items = grid.tiles()->items();
    const auto app = std::ranges::find(items, false, &TileItem::isFolder);
    if (app == items.end()) {
        return;
    }
    const int at = static_cast<int>(app - items.begin());
    const QPointF from = middleOf(at);
    const QPointF to =
        middleOf(std::max(0, at - 6)) + QPointF(grid.tileRect(app->id).width() / 2, 30);
    movePointer(window, QEvent::MouseButtonPress, from);
    for (int step = 1; step <= steps; ++step) {
        movePointer(window, QEvent::MouseMove, from + (to - from) * step / steps);
    }
}

/// Begins a focus session of a workspace without touching the desk: one that opens nothing.
void pretendSession(LauncherController& controller, AppModel& model, QSize size) {
    constexpr int minutes = 25;
    Workspace empty = model.workspaces().all().front();
    empty.items.clear();
    empty.windows.clear();
    empty.others = Workspace::Others::keep;
    model.open(empty, minutes);
    controller.prepare(size);
    // The notices of its beginning go by themselves.
    waitFor([&] { return controller.viewModel().notices()->rowCount() == 0; });
}

/// What shows workspaces. Nothing to do for other views.
std::expected<void, std::string> arrangeWorkspaces(const QString& view,
                                                   LauncherController& controller, AppModel& model,
                                                   LauncherState& state, QSize size) {
    static const std::set<QString> views{"workspace-strip",   "workspace-list",
                                         "workspace-editor",  "focus-session",
                                         "new-focus-session", "workspace-from-open"};
    if (!views.contains(view)) {
        return {};
    }
    if (model.workspaces().all().empty()) {
        return std::unexpected("There are no workspaces yet.");
    }
    const QString first = QString::fromStdString(model.workspaces().all().front().id.string());
    if (view == "workspace-list") {
        state.setPanel(LauncherState::Panel::workspaces);
    } else if (view == "workspace-editor") {
        controller.workspaces().edit(first);
    } else if (view == "focus-session") {
        pretendSession(controller, model, size);
    } else if (view == "new-focus-session") {
        controller.workspaces().chooseSession(first);
    } else if (view == "workspace-from-open") {
        controller.workspaces().chooseFromOpen();
    }
    return {};
}

/// Brings the launcher into the state that the picture is to show.
std::expected<void, std::string> arrange(const QString& view, LauncherController& controller,
                                         AppModel& model, LauncherState& state) {
    if (view == "folder") {
        const Tile* folder = firstFolder(model);
        if (folder == nullptr) {
            return std::unexpected("There is no folder on the grid to show.");
        }
        state.setOpenFolder(folder->folder()->id);
    } else if (view == "history") {
        // So that there is something to go back to.
        model.sortAlphabetically();
        model.autoFolders();
        state.setPanel(LauncherState::Panel::history);
    }
    // What is typed for a picture of what typing shows.
    static const std::map<QString, std::string> typed{
        {"search", "photo"}, {"calculator", "12*7"}, {"emoji", ":heart"}, {"no-results", "qqqq"}};
    if (const auto query = typed.find(view); query != typed.end()) {
        state.setQuery(query->second);
    }
    SuggestionsState& suggestions = controller.suggestions();
    if (view == "smart-row" && suggestions.row().empty()) {
        return std::unexpected("No apps are suggested yet.");
    }
    if (view == "habit-bar" && !waitFor([&] { return suggestions.offered().has_value(); })) {
        return std::unexpected("There is no habit to offer.");
    }
    if (view == "settings") {
        constexpr int workspacesPage = 1;
        controller.settings().setPage(workspacesPage);
        state.setPanel(LauncherState::Panel::settings);
    }
    return {};
}

/// The same for what needs the scene to be there.
void act(const QString& view, QQuickWindow& window, AppModel& model, LauncherState& state) {
    auto* grid = window.contentItem()->findChild<TileGrid*>("grid");
    if (grid == nullptr) {
        return;
    }
    if (view == "context-menu") {
        const Tile* folder = firstFolder(model);
        const int shown =
            folder == nullptr ? 0 : static_cast<int>(folder - model.visibleTiles().data());
        Q_EMIT state.menuRequested(shown);
    } else if (view == "dragging") {
        dragSomeTile(window, *grid);
    }
}

} // namespace

bool isSettled(const QQuickItem& root) {
    return !root.property("moving").toBool() && !isBusy(root);
}

std::expected<void, std::string> takeScreenshot(LauncherController& controller, AppModel& model,
                                                LauncherState& state, const QString& view,
                                                QSize size, const std::filesystem::path& file) {
    controller.prepare(size);
    if (auto arranged = arrangeWorkspaces(view, controller, model, state, size); !arranged) {
        return arranged;
    }
    if (auto arranged = arrange(view, controller, model, state); !arranged) {
        return arranged;
    }
    QQuickView& window = controller.window();
    if (window.rootObject() == nullptr) {
        return std::unexpected("The views could not be loaded.");
    }
    // Twice: the first frame is what asks for the pictures.
    window.grabWindow();
    if (!waitFor([&] { return isSettled(*window.rootObject()); })) {
        return std::unexpected("Some pictures did not arrive in time.");
    }
    act(view, window, model, state);
    window.grabWindow();
    if (!waitFor([&] { return isSettled(*window.rootObject()); })) {
        return std::unexpected("Some pictures did not arrive in time.");
    }
    const QImage image = window.grabWindow();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (image.isNull() || !image.save(&buffer, "PNG")) {
        return std::unexpected("The view could not be rendered.");
    }
    const auto written =
        AtomicFile::write(file, {png.constData(), static_cast<std::size_t>(png.size())});
    if (!written) {
        return std::unexpected("Couldn't write " + file.string() + ": " +
                               written.error().message());
    }
    return {};
}

} // namespace vellory
