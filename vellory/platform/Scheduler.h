// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "Support/Date.h"

namespace vellory {

/// The time now.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual Date now() const = 0;
};

/// When and where work runs. Main thread; every task runs there except the first half of
/// `inBackground`.
class Scheduler {
  public:
    using Task = std::function<void()>;

    /// Keeps a task waiting: destroying it cancels the task.
    class Pending {
      public:
        virtual ~Pending() = default;
    };
    using Handle = std::unique_ptr<Pending>;

    virtual ~Scheduler() = default;

    /// Runs `task` once, `seconds` from now. With 0 it still runs later, never within the call.
    [[nodiscard]] virtual Handle after(double seconds, Task task) = 0;

    /// Runs `task` every `seconds`, the first time `seconds` from now.
    [[nodiscard]] virtual Handle every(double seconds, Task task) = 0;

    /// Runs `work` on another thread and then what it returned on the main thread. What `work`
    /// captures must be values or ports: those live until no work runs any more.
    virtual void inBackground(std::function<Task()> work) = 0;
};

} // namespace vellory
