// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtDisplays.h"

#include <QGuiApplication>
#include <QScreen>

namespace vellory {

namespace {

std::string nameOf(const QScreen& screen) {
    const QString model = (screen.manufacturer() + ' ' + screen.model()).simplified();
    return (model.isEmpty() ? screen.name() : model).toStdString();
}

/// Qt keeps a display's place in the window system's pixels but gives its size at the scale it
/// draws at.
Workspace::Rect frameOf(const QScreen& screen) {
    const QRect scaled = screen.geometry();
    const double scale = screen.devicePixelRatio();
    return {static_cast<double>(scaled.x()), static_cast<double>(scaled.y()),
            scaled.width() * scale, scaled.height() * scale};
}

} // namespace

QtDisplays::QtDisplays() {
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context_, [this](QScreen* screen) {
        watch(*screen);
        if (changed_) {
            changed_();
        }
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &context_, [this] {
        if (changed_) {
            changed_();
        }
    });
    for (const QScreen* screen : QGuiApplication::screens()) {
        watch(*screen);
    }
}

void QtDisplays::watch(const QScreen& screen) {
    QObject::connect(&screen, &QScreen::geometryChanged, &context_, [this] {
        if (changed_) {
            changed_();
        }
    });
}

std::vector<Display> QtDisplays::list() const {
    std::vector<Display> displays;
    for (const QScreen* screen : QGuiApplication::screens()) {
        displays.push_back({nameOf(*screen), frameOf(*screen)});
    }
    return displays;
}

} // namespace vellory
