// SPDX-License-Identifier: Apache-2.0
#include "shell/Screenshot.h"

#include <algorithm>
#include <map>

#include <QBuffer>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QQuickItem>

#include "Support/AtomicFile.h"
#include "model/AppModel.h"
#include "model/LauncherState.h"
#include "shell/LauncherController.h"

namespace vellory {

namespace {

constexpr int patienceMilliseconds = 15'000;

/// Whether some picture in the scene is still on its way.
bool isLoading(const QQuickItem& item) {
    constexpr int loadingStatus = 2; // Image.Loading
    const QVariant status = item.property("status");
    if (item.isVisible() && status.isValid() && item.property("sourceSize").isValid() &&
        status.toInt() == loadingStatus) {
        return true;
    }
    return std::ranges::any_of(item.childItems(),
                               [](const QQuickItem* child) { return isLoading(*child); });
}

/// Lets events run until `done`, or until patience ends.
template <class Condition>
bool waitFor(Condition done) {
    const QDeadlineTimer deadline(patienceMilliseconds);
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

/// Brings the launcher into the state that the picture is to show.
std::expected<void, std::string> arrange(const QString& view, AppModel& model,
                                         LauncherState& state) {
    if (view == "folder") {
        const auto& tiles = model.visibleTiles();
        const auto folder =
            std::ranges::find_if(tiles, [](const Tile& tile) { return tile.folder() != nullptr; });
        if (folder == tiles.end()) {
            return std::unexpected("There is no folder on the grid to show.");
        }
        state.setOpenFolder(folder->folder()->id);
    }
    // What is typed for a picture of what typing shows.
    static const std::map<QString, std::string> typed{
        {"search", "photo"}, {"calculator", "12*7"}, {"emoji", ":heart"}, {"no-results", "qqqq"}};
    if (const auto query = typed.find(view); query != typed.end()) {
        state.setQuery(query->second);
    }
    return {};
}

} // namespace

bool isSettled(const QQuickItem& root) {
    return !root.property("moving").toBool() && !isLoading(root);
}

std::expected<void, std::string> takeScreenshot(LauncherController& controller, AppModel& model,
                                                LauncherState& state, const QString& view,
                                                QSize size, const std::filesystem::path& file) {
    controller.prepare(size);
    if (auto arranged = arrange(view, model, state); !arranged) {
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
