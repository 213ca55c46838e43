// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

namespace vellory {

/// The loop that the main thread waits in, as far as platforms with connections of their own need
/// it. Main thread.
class EventLoop {
  public:
    /// Keeps a descriptor watched: destroying it ends that, also from inside its own callback.
    class Watch {
      public:
        virtual ~Watch() = default;
    };
    using Handle = std::unique_ptr<Watch>;

    virtual ~EventLoop() = default;

    /// Calls `ready` whenever `fd` can be read (or has failed) until the handle is gone. The
    /// descriptor must stay open that long.
    [[nodiscard]] virtual Handle watchReadable(int fd, std::function<void()> ready) = 0;
};

} // namespace vellory
