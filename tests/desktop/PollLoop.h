// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/EventLoop.h"
#include "platform/Scheduler.h"

namespace vellory::test {

/// The main loop of a desktop test: descriptors, timers and work on other threads, over poll(2).
class PollLoop final : public EventLoop, public Scheduler {
  public:
    PollLoop();
    ~PollLoop() override;

    /// Waits for events until `done` holds; false when it still does not after ten seconds, which
    /// is how a test fails and never how it passes.
    bool runUntil(const std::function<bool()>& done);

    EventLoop::Handle watchReadable(int fd, std::function<void()> ready) override;
    Scheduler::Handle after(double seconds, Task task) override;
    Scheduler::Handle every(double seconds, Task task) override;
    void inBackground(std::function<Task()> work) override;

  private:
    using Time = std::chrono::steady_clock::time_point;
    struct Watched {
        int fd;
        std::function<void()> ready;
        bool isGone = false;
    };
    struct Timer {
        Time due;
        double interval; ///< 0 for once
        Task task;
        bool isGone = false;
    };
    template <class T, class Base>
    class Entry;

    void runOnce(Time deadline);

    int wake_;
    std::vector<std::shared_ptr<Watched>> watched_;
    std::vector<std::shared_ptr<Timer>> timers_;
    std::mutex mutex_;
    std::vector<Task> finished_;
    std::list<std::jthread> threads_;
};

} // namespace vellory::test
