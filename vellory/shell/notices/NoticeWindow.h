// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QObject>
#include <QQuickView>

#include "shell/notices/NoticeList.h"

namespace vellory {

/// Shows notices near the bottom edge of the display with the pointer while the grid is hidden:
/// what a shortcut, a link or a schedule has done. It takes no focus, and the window manager leaves
/// it where it is.
class NoticeWindow : public QObject {
    Q_OBJECT

  public:
    NoticeWindow(QQmlEngine& engine, NoticeList& notices, QObject* parent = nullptr);

    /// While the grid is shown, it shows the notices itself.
    void setGridShown(bool isShown);

    bool isShown() const { return view_ != nullptr && view_->isVisible(); }

  private:
    void update();
    void place();
    /// Cuts the window to its capsules: where nothing composes windows, what is clear shows black.
    void shape();

    QQmlEngine& engine_;
    NoticeList& notices_;
    bool isGridShown_ = false;
    std::unique_ptr<QQuickView> view_;
};

} // namespace vellory
