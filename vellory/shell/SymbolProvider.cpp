// SPDX-License-Identifier: Apache-2.0
#include "shell/SymbolProvider.h"

#include <algorithm>

#include <QColor>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace vellory {

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requested) {
    const int pixels = std::clamp(requested.width() > 0 ? requested.width() : 18, 8, 512);
    const QString name = id.section('/', 0, 0);
    const QColor color("#" + id.section('/', 1));

    QString file = ":/qt/qml/Vellory/symbols/" + name + ".svg";
    if (name.contains("..") || !QFile::exists(file)) {
        file = ":/qt/qml/Vellory/symbols/circle.fill.svg";
    }
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(file);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color.isValid() ? color : QColor(Qt::white));
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace vellory
