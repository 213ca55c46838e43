// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include "platform/Displays.h"

class QScreen;

namespace vellory {

/// The displays as Qt knows them; needs a QGuiApplication. Frames are in the window system's own
/// pixels, whatever scale the program draws at.
class QtDisplays final : public Displays {
  public:
    QtDisplays();

    std::vector<Display> list() const override;
    void observe(std::function<void()> changed) override { changed_ = std::move(changed); }

  private:
    void watch(const QScreen& screen);

    QObject context_; ///< ends the connections with this object
    std::function<void()> changed_;
};

} // namespace vellory
