// SPDX-License-Identifier: Apache-2.0
#include "shell/images/SymbolProvider.h"

#include <algorithm>

#include <QColor>
#include <QPainter>
#include <QSvgRenderer>
#include <QUrl>

#include "shell/images/Symbols.h"

namespace vellory {

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requested) {
    const int pixels = std::clamp(requested.width() > 0 ? requested.width() : 18, 8, 512);
    const QString name = QUrl::fromPercentEncoding(id.section('/', 0, -2).toUtf8());
    const QColor color("#" + id.section('/', -1));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(Symbols::file(name));
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
