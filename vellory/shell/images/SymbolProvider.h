// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QQuickImageProvider>

namespace vellory {

/// Serves `image://symbols/<name>/<aarrggbb>`: the symbols of workspaces, notices and buttons in
/// one colour. The name (see `Symbols`) is percent-encoded: stored data may hold any text.
class SymbolProvider : public QQuickImageProvider {
  public:
    SymbolProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

} // namespace vellory
