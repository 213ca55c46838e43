// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "platform/EventLoop.h"

namespace vellory {

/// Turns the signals by which a session or a terminal ends a program (SIGTERM, SIGINT, SIGHUP) into
/// a call on the main thread, so that what waits to be written is written. A second signal ends the
/// program at once. One object at a time.
class EndSignals {
  public:
    /// `loop` must outlive this object.
    EndSignals(EventLoop& loop, std::function<void()> end);
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    /// The signals mean again what they mean by themselves.
    ~EndSignals();

  private:
    int arrived_; ///< readable once a signal has come
    EventLoop::Handle watch_;
};

} // namespace vellory
