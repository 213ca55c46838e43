// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QQuickImageProvider>

namespace vellory {

/// Serves `image://symbols/<name>/<aarrggbb>`: the symbols of notices and buttons in one colour.
/// The names are those that stored data and notices use; a name without a drawing gets a plain dot.
class SymbolProvider : public QQuickImageProvider {
  public:
    SymbolProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

} // namespace vellory
