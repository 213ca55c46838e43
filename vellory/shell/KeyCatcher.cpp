// SPDX-License-Identifier: Apache-2.0
#include "shell/KeyCatcher.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace vellory {

namespace {
constexpr int retryMilliseconds = 10;
constexpr int deadlineMilliseconds = 3000;
} // namespace

KeyCatcher::KeyCatcher() {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
             Qt::WindowTransparentForInput);
    // Beside the screen.
    setGeometry(-8, -8, 1, 1);
    retry_.setInterval(retryMilliseconds);
    deadline_.setInterval(deadlineMilliseconds);
    deadline_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &KeyCatcher::tryToGrab);
    connect(&deadline_, &QTimer::timeout, this, &KeyCatcher::stop);
}

void KeyCatcher::start() {
    // Elsewhere windows cannot be where the user does not see them, or take the keyboard.
    if (QGuiApplication::platformName() != "xcb" || deadline_.isActive()) {
        return;
    }
    deadline_.start();
    show();
    tryToGrab();
}

void KeyCatcher::tryToGrab() {
    // Refused as long as somebody else has the keyboard: who watches for the shortcut that was
    // pressed has it until the shortcut is let go.
    if (setKeyboardGrabEnabled(true)) {
        retry_.stop();
    } else {
        retry_.start();
    }
}

void KeyCatcher::stop() {
    if (deadline_.isActive() || isVisible()) {
        deadline_.stop();
        retry_.stop();
        setKeyboardGrabEnabled(false);
        hide();
    }
}

void KeyCatcher::keyPressEvent(QKeyEvent* event) {
    Q_EMIT caught(event->key(), static_cast<int>(event->modifiers()), event->text());
}

} // namespace vellory
