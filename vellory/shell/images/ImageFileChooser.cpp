// SPDX-License-Identifier: Apache-2.0
#include "shell/images/ImageFileChooser.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>
#include <QWindow>

namespace vellory {

void ImageFileChooser::attach(QQmlEngine* engine, QWindow* window) {
    engine_ = engine;
    window_ = window;
}

void ImageFileChooser::chooseImage(const std::string& title,
                                   std::function<void(const std::filesystem::path&)> chosen) {
    if (engine_ == nullptr) {
        return;
    }
    if (dialog_ == nullptr) {
        QQmlComponent component(engine_, QUrl("qrc:/qt/qml/Vellory/qml/ImageDialog.qml"));
        dialog_.reset(component.create());
        if (dialog_ == nullptr) {
            for (const QQmlError& error : component.errors()) {
                qWarning("%s", qPrintable(error.toString()));
            }
            return;
        }
        connect(dialog_.get(), SIGNAL(chosen(QUrl)), this, SLOT(accept(QUrl)));
    }
    chosen_ = std::move(chosen);
    dialog_->setProperty("title", QString::fromStdString(title));
    dialog_->setProperty("parentWindow", QVariant::fromValue(window_.data()));
    QMetaObject::invokeMethod(dialog_.get(), "open");
}

void ImageFileChooser::accept(const QUrl& file) {
    if (const auto chosen = std::exchange(chosen_, nullptr); chosen && file.isLocalFile()) {
        chosen(file.toLocalFile().toStdString());
    }
}

} // namespace vellory
