// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>
#include <QWindow>

namespace vellory {

/// Takes the keyboard from the moment of a summons until the launcher's window has the focus: what
/// is typed meanwhile would go to the window that had it before. An invisible window of its own
/// that the window manager does not know can do so at once, while the launcher's is still on its
/// way to the screen.
class KeyCatcher : public QWindow {
    Q_OBJECT

  public:
    KeyCatcher();

    /// Gives up by itself after a while, should the focus never come.
    void start();
    void stop();

  Q_SIGNALS:
    void caught(int key, int modifiers, const QString& text);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void tryToGrab();

    QTimer retry_;
    QTimer deadline_;
};

} // namespace vellory
