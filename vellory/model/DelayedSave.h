// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <utility>

#include "Support/Date.h"
#include "platform/Scheduler.h"

namespace vellory {

/// Turns a burst of changes into one write: saving happens once nothing has changed for a while.
/// Changes that never pause are written now and then all the same. Whoever owns this calls `flush`
/// at the end.
class DelayedSave {
  public:
    /// How long after the last change, in seconds.
    static constexpr double delay = 5.0;
    /// How long after the first change at the latest.
    static constexpr double longest = 30.0;

    /// `clock` and `scheduler` must outlive this object.
    DelayedSave(const Clock& clock, Scheduler& scheduler, std::function<void()> save)
        : clock_(clock), scheduler_(scheduler), save_(std::move(save)) {}

    void changed() {
        const Date now = clock_.now();
        if (!isDirty_) {
            isDirty_ = true;
            since_ = now;
        }
        // A clock that was set back must not put the write off.
        if (const double waited = now.since(since_); waited >= longest || waited < 0) {
            pending_.reset();
            flush();
            return;
        }
        pending_ = scheduler_.after(delay, [this] { flush(); });
    }

    /// Writes what waits to be written.
    void flush() {
        if (isDirty_) {
            isDirty_ = false;
            save_();
        }
    }

  private:
    const Clock& clock_;
    Scheduler& scheduler_;
    std::function<void()> save_;
    bool isDirty_ = false;
    Date since_;
    Scheduler::Handle pending_;
};

} // namespace vellory
