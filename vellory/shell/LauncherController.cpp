// SPDX-License-Identifier: Apache-2.0
#include "shell/LauncherController.h"

#include <tuple>
#include <utility>

#include <QCursor>
#include <QDir>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

#include "shell/images/ShadowProvider.h"
#include "shell/images/SymbolProvider.h"

// Made by the build from the types of the Vellory module. Taking its address keeps the registration
// in a program that is linked statically.
void qml_register_types_Vellory();

namespace vellory {

namespace {

constexpr const char* mainViewUrl = "qrc:/qt/qml/Vellory/qml/LauncherView.qml";

QScreen* screenWithPointer() {
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    return screen == nullptr ? QGuiApplication::primaryScreen() : screen;
}

QSize pixelsOf(const QScreen& screen) {
    return screen.size() * screen.devicePixelRatio();
}

} // namespace

LauncherController::LauncherController(Parts parts, QObject* parent)
    : QObject(parent), parts_(parts), viewModel_(parts.model, parts.state, iconSources_),
      suggestions_(parts.model, parts.state),
      suggestionsModel_(parts.model, parts.state, suggestions_, viewModel_),
      settings_(parts.model, QDir::homePath().toStdString()),
      workspaces_(parts.model, parts.state, parts.scheduler, viewModel_) {
    connect(&parts_.state, &LauncherState::hideRequested, this, &LauncherController::hide);
    connect(&parts_.model, &AppModel::launcherHideRequested, this, &LauncherController::hide);
    connect(&keyCatcher_, &KeyCatcher::caught, this,
            [this](int key, int modifiers, const QString& text) {
                suggestionsModel_.handleKey(key, modifiers, text);
            });
    parts_.state.setRightToLeft(QGuiApplication::isRightToLeft());
}

LauncherController::~LauncherController() = default;

void LauncherController::expectShow() {
    keyCatcher_.start();
    // The first text waits until all fonts of the machine are known.
    fonts_ = std::async(std::launch::async, [font = QGuiApplication::font()] {
        std::ignore = QFontInfo(font).family();
    });
    provideGradient(pixelsOf(*screenWithPointer()));
    createEngine();
}

void LauncherController::createEngine() {
    if (engine_ != nullptr) {
        return;
    }
    [[maybe_unused]] static void (*const volatile registration)() = &qml_register_types_Vellory;
    engine_ = std::make_unique<QQmlEngine>();
    engine_->addImportPath(":/qt/qml");
    engine_->addImageProvider("icons", new IconProvider(parts_.icons, iconSources_));
    engine_->addImageProvider("symbols", new SymbolProvider);
    engine_->addImageProvider("shadow", new ShadowProvider);
    engine_->addImageProvider("backdrop", new BackdropProvider(backdrop_));
    mainView_ = std::make_unique<QQmlComponent>(engine_.get(), QUrl(mainViewUrl),
                                                QQmlComponent::Asynchronous);
}

void LauncherController::createWindow() {
    if (view_ != nullptr) {
        return;
    }
    createEngine();
    view_ = std::make_unique<QQuickView>(engine_.get(), nullptr);
    view_->setFlags(Qt::Window | Qt::FramelessWindowHint);
    view_->setTitle("Vellory");
    view_->setResizeMode(QQuickView::SizeRootObjectToView);
    view_->setPersistentGraphics(true);
    view_->setPersistentSceneGraph(true);
    view_->setInitialProperties({{"launcher", QVariant::fromValue(&viewModel_)},
                                 {"suggestions", QVariant::fromValue(&suggestionsModel_)},
                                 {"settings", QVariant::fromValue(&settings_)},
                                 {"workspaces", QVariant::fromValue(&workspaces_)}});
    view_->setSource(QUrl(mainViewUrl));
    view_->installEventFilter(this);
    noticeWindow_ = std::make_unique<NoticeWindow>(*engine_, *viewModel_.notices());
    connect(view_.get(), &QQuickWindow::frameSwapped, this, [this] {
        if (awaitingFrame_) {
            awaitingFrame_ = false;
            Q_EMIT shown();
        }
    });
    // Losing the focus to another window ends the summons, as a click beside a menu does.
    connect(view_.get(), &QWindow::activeChanged, this, [this] {
        if (view_->isActive()) {
            wasActive_ = true;
            keyCatcher_.stop();
        } else if (wasActive_ && isShown() && !workspaces_.isChoosingFiles()) {
            hide();
        }
    });
}

void LauncherController::show() {
    const bool hasKeyboard = view_ != nullptr && view_->isActive();
    if (!hasKeyboard) {
        keyCatcher_.start();
    }
    QScreen* screen = screenWithPointer();
    const QRect area = screen->geometry();
    provideGradient(pixelsOf(*screen));
    loadWallpaper(*screen);
    createWindow();
    if (isShown()) {
        view_->raise();
        view_->requestActivate();
        return;
    }
    parts_.state.reset();
    if (!area.isEmpty()) {
        const QPointF pointer = QCursor::pos() - area.topLeft();
        parts_.state.setRippleOrigin({pointer.x() / area.width(), pointer.y() / area.height()});
    }
    wasActive_ = false;
    awaitingFrame_ = true;
    view_->setScreen(screen);
    view_->setGeometry(area);
    parts_.state.setPresented(true);
    noticeWindow_->setGridShown(true);
    view_->showFullScreen();
    view_->raise();
    view_->requestActivate();
    parts_.model.refreshBadges();
    parts_.model.learned().refresh();
}

void LauncherController::hide() {
    if (!isShown()) {
        return;
    }
    parts_.state.setPresented(false);
    keyCatcher_.stop();
    awaitingFrame_ = false;
    if (view_ != nullptr) {
        view_->hide();
        noticeWindow_->setGridShown(false);
    }
    Q_EMIT hidden();
}

void LauncherController::showSettings() {
    constexpr QSize usual(760, 600);
    constexpr QSize least(560, 420);
    hide();
    createWindow();
    if (settingsView_ == nullptr) {
        settingsView_ = std::make_unique<QQuickView>(engine_.get(), nullptr);
        settingsView_->setTitle("vellory Settings");
        settingsView_->setResizeMode(QQuickView::SizeRootObjectToView);
        settingsView_->setMinimumSize(least);
        settingsView_->resize(usual);
        settingsView_->setInitialProperties(
            {{"settings", QVariant::fromValue(&settings_)},
             {"suggestions", QVariant::fromValue(&suggestionsModel_)}});
        settingsView_->setSource(QUrl("qrc:/qt/qml/Vellory/qml/SettingsView.qml"));
    }
    settingsView_->show();
    settingsView_->raise();
    settingsView_->requestActivate();
}

void LauncherController::prepare(QSize size) {
    const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
    provideGradient(size * scale);
    createWindow();
    parts_.state.reset();
    parts_.state.setPresented(true);
    noticeWindow_->setGridShown(true);
    view_->resize(size);
    view_->show();
}

void LauncherController::provideGradient(QSize size) {
    if (size != backdropSize_) {
        backdropSize_ = size;
        isWallpaperDue_ = true;
        applyBackdrop(std::async(std::launch::async, Backdrop::gradient, size, viewModel_.dark()));
    }
}

void LauncherController::loadWallpaper(const QScreen& screen) {
    if (!std::exchange(isWallpaperDue_, false)) {
        return;
    }
    const QSize size = pixelsOf(screen);
    const QPoint origin = screen.geometry().topLeft() * screen.devicePixelRatio();
    const Desktop::Area area{origin.x(), origin.y(), size.width(), size.height()};
    const bool dark = viewModel_.dark();
    const Desktop& desktop = parts_.desktop;
    QPointer<LauncherController> self = this;
    parts_.scheduler.inBackground([self, &desktop, area, size, dark]() -> Scheduler::Task {
        const auto wallpaper = desktop.backdrop(area);
        if (!wallpaper || Backdrop::isBlank(*wallpaper)) {
            return {};
        }
        std::promise<QImage> softened;
        softened.set_value(Backdrop::softened(*wallpaper, size, dark));
        return [self, size, image = softened.get_future().share()] {
            // By then the grid may stand on another display.
            if (self != nullptr && self->backdropSize_ == size) {
                self->applyBackdrop(image);
            }
        };
    });
}

void LauncherController::applyBackdrop(std::shared_future<QImage> image) {
    backdrop_->set(std::move(image));
    viewModel_.setBackdrop("image://backdrop/" + QString::number(++backdropGeneration_));
}

bool LauncherController::eventFilter(QObject* watched, QEvent* event) {
    // The window manager's own close (Alt+F4) hides: the program goes on waiting for a summons.
    if (event->type() == QEvent::Close) {
        hide();
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vellory
