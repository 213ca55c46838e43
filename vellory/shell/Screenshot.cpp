// SPDX-License-Identifier: Apache-2.0
#include "shell/Screenshot.h"

#include <algorithm>

#include <QBuffer>
#include <QQuickItem>

#include "Support/AtomicFile.h"
#include "shell/LauncherController.h"
#include "shell/ScreenshotViews.h"
#include "shell/WaitFor.h"

namespace vellory {

namespace {

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

} // namespace

bool isSettled(const QQuickItem& root) {
    return !root.property("moving").toBool() && !isBusy(root);
}

std::expected<void, std::string> takeScreenshot(const ScreenshotView& view,
                                                const ScreenshotView::Scene& scene,
                                                const std::filesystem::path& file) {
    scene.controller.prepare(scene.size);
    if (auto arranged = view.arrange(scene); !arranged) {
        return arranged;
    }
    QQuickView& window = scene.controller.window();
    if (window.rootObject() == nullptr) {
        return std::unexpected("The views could not be loaded.");
    }
    // Twice: the first frame is what asks for the pictures.
    window.grabWindow();
    if (!waitFor([&] { return isSettled(*window.rootObject()); })) {
        return std::unexpected("Some pictures did not arrive in time.");
    }
    if (view.act != nullptr) {
        view.act(scene);
        window.grabWindow();
        if (!waitFor([&] { return isSettled(*window.rootObject()); })) {
            return std::unexpected("Some pictures did not arrive in time.");
        }
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
