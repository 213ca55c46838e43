// SPDX-License-Identifier: Apache-2.0
#include "shell/notices/NoticeWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPainterPath>
#include <QQmlEngine>
#include <QQuickItem>
#include <QScreen>

namespace vellory {

namespace {

/// From the display's lower edge, as over the grid.
constexpr int edge = 72;

} // namespace

NoticeWindow::NoticeWindow(QQmlEngine& engine, NoticeList& notices, QObject* parent)
    : QObject(parent), engine_(engine), notices_(notices) {
    connect(&notices_, &NoticeList::rowsInserted, this, &NoticeWindow::update);
    connect(&notices_, &NoticeList::rowsRemoved, this, &NoticeWindow::update);
    // The link that started the program may have been answered already.
    update();
}

void NoticeWindow::setGridShown(bool isShown) {
    isGridShown_ = isShown;
    update();
}

void NoticeWindow::update() {
    const bool isWanted = !isGridShown_ && notices_.rowCount() > 0;
    if (isWanted && view_ == nullptr) {
        view_ = std::make_unique<QQuickView>(&engine_, nullptr);
        view_->setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                        Qt::WindowDoesNotAcceptFocus);
        view_->setColor(Qt::transparent);
        view_->setResizeMode(QQuickView::SizeViewToRootObject);
        view_->setInitialProperties({{"notices", QVariant::fromValue(&notices_)}});
        view_->setSource(QUrl("qrc:/qt/qml/Vellory/qml/NoticeView.qml"));
        connect(view_.get(), &QQuickWindow::afterAnimating, this, &NoticeWindow::shape);
        connect(view_.get(), &QWindow::widthChanged, this, &NoticeWindow::place);
        connect(view_.get(), &QWindow::heightChanged, this, &NoticeWindow::place);
    }
    if (isWanted) {
        place();
        view_->show();
    } else if (view_ != nullptr) {
        view_->hide();
    }
}

void NoticeWindow::shape() {
    QPainterPath capsules;
    const auto* stack = view_->rootObject()->findChild<QQuickItem*>("notices");
    for (const QQuickItem* item : stack->childItems()) {
        if (item->property("radius").isValid()) {
            const double radius = item->property("radius").toDouble();
            capsules.addRoundedRect(QRectF(item->position(), item->size()), radius, radius);
        }
    }
    const QRegion region(capsules.toFillPolygon().toPolygon());
    if (!region.isEmpty() && region != view_->mask()) {
        view_->setMask(region);
    }
}

void NoticeWindow::place() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    const QRect area = screen->geometry();
    view_->setPosition(area.x() + (area.width() - view_->width()) / 2,
                       area.y() + area.height() - edge - view_->height());
}

} // namespace vellory
