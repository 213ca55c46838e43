// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <future>
#include <memory>
#include <mutex>

#include <QImage>
#include <QQuickImageProvider>

#include "platform/Image.h"

namespace vellory {

/// What lies behind the grid: the wallpaper softened so that text reads well on it, or a quiet
/// gradient where there is none.
namespace Backdrop {

/// The finished picture: blurred (48 device-independent pixels), a little more saturated, and under
/// the veil of the appearance. Slow: tens of milliseconds.
QImage softened(const Image& wallpaper, QSize size, bool dark);

/// The picture for a desktop without a wallpaper.
QImage gradient(QSize size, bool dark);

/// Whether a picture shows nothing worth having behind the grid, such as an empty root window.
bool isBlank(const Image& image);

} // namespace Backdrop

/// Serves the current backdrop as `image://backdrop/<generation>`. Any thread.
class BackdropStore {
  public:
    /// One that may still be being made.
    void set(std::shared_future<QImage> image);
    /// Waits for one that is still being made; null when none was set.
    QImage image() const;

  private:
    mutable std::mutex mutex_;
    std::shared_future<QImage> image_;
};

class BackdropProvider : public QQuickImageProvider {
  public:
    explicit BackdropProvider(std::shared_ptr<const BackdropStore> store)
        : QQuickImageProvider(QQuickImageProvider::Image), store_(std::move(store)) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;

  private:
    std::shared_ptr<const BackdropStore> store_;
};

} // namespace vellory
