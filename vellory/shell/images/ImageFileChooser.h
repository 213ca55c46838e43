// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>

#include "platform/ImageChooser.h"

class QQmlEngine;
class QWindow;

namespace vellory {

/// The desktop's file dialog for pictures. The dialog is made when it is first asked for.
class ImageFileChooser final : public QObject, public ImageChooser {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// The engine that makes the dialog and the window that it belongs to.
    void attach(QQmlEngine* engine, QWindow* window);

    void chooseImage(const std::string& title,
                     std::function<void(const std::filesystem::path&)> chosen) override;

  private Q_SLOTS:
    void accept(const QUrl& file);

  private:
    QPointer<QQmlEngine> engine_;
    QPointer<QWindow> window_;
    std::function<void(const std::filesystem::path&)> chosen_;
    std::unique_ptr<QObject> dialog_;
};

} // namespace vellory
