// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/EventLoop.h"

namespace vellory {

/// The main thread's loop by Qt's socket notifiers.
class QtEventLoop final : public EventLoop {
  public:
    Handle watchReadable(int fd, std::function<void()> ready) override;
};

} // namespace vellory
