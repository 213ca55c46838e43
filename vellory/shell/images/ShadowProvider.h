// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QQuickImageProvider>

namespace vellory {

/// Draws `image://shadow/<blur>/<percent>`: the soft black shadow of a box, for a `BorderImage`
/// whose borders are twice the blur. Its outer half lies outside of the box.
class ShadowProvider : public QQuickImageProvider {
  public:
    ShadowProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

} // namespace vellory
