// SPDX-License-Identifier: Apache-2.0
#include "PollLoop.h"

#include <algorithm>
#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vellory::test {

using namespace std::chrono;

/// Takes its entry out of the loop when it goes.
template <class T, class Base>
class PollLoop::Entry final : public Base {
  public:
    explicit Entry(std::shared_ptr<T> entry) : entry_(std::move(entry)) {}
    ~Entry() override { entry_->isGone = true; }

  private:
    std::shared_ptr<T> entry_;
};

PollLoop::PollLoop() : wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

PollLoop::~PollLoop() {
    threads_.clear(); // Joins them: they write to the descriptor.
    close(wake_);
}

EventLoop::Handle PollLoop::watchReadable(int fd, std::function<void()> ready) {
    watched_.push_back(std::make_shared<Watched>(fd, std::move(ready)));
    return std::make_unique<Entry<Watched, EventLoop::Watch>>(watched_.back());
}

Scheduler::Handle PollLoop::after(double seconds, Task task) {
    const auto due = steady_clock::now() + duration_cast<nanoseconds>(duration<double>(seconds));
    timers_.push_back(std::make_shared<Timer>(due, 0.0, std::move(task)));
    return std::make_unique<Entry<Timer, Scheduler::Pending>>(timers_.back());
}

Scheduler::Handle PollLoop::every(double seconds, Task task) {
    auto handle = after(seconds, std::move(task));
    timers_.back()->interval = seconds;
    return handle;
}

void PollLoop::inBackground(std::function<Task()> work) {
    threads_.emplace_back([this, work = std::move(work)] {
        Task then = work();
        const std::lock_guard lock(mutex_);
        finished_.push_back(std::move(then));
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = write(wake_, &one, sizeof one);
    });
}

bool PollLoop::runUntil(const std::function<bool()>& done) {
    const Time deadline = steady_clock::now() + seconds(10);
    while (!done()) {
        if (steady_clock::now() >= deadline) {
            return false;
        }
        runOnce(deadline);
    }
    return true;
}

void PollLoop::runOnce(Time deadline) {
    std::erase_if(watched_, [](const auto& entry) { return entry->isGone; });
    std::erase_if(timers_, [](const auto& entry) { return entry->isGone; });
    Time until = deadline;
    for (const auto& timer : timers_) {
        until = std::min(until, timer->due);
    }
    std::vector<pollfd> descriptors{{wake_, POLLIN, 0}};
    for (const auto& entry : watched_) {
        descriptors.push_back({entry->fd, POLLIN, 0});
    }
    const auto wait = ceil<milliseconds>(until - steady_clock::now()).count();
    poll(descriptors.data(), descriptors.size(), static_cast<int>(std::max<long>(wait, 0)));

    std::uint64_t ignored = 0;
    [[maybe_unused]] const auto count = read(wake_, &ignored, sizeof ignored);
    std::vector<Task> tasks;
    {
        const std::lock_guard lock(mutex_);
        tasks.swap(finished_);
    }
    for (const Task& task : tasks) {
        task();
    }
    // Copies: what runs may add and remove entries, its own included.
    const auto watched = watched_;
    for (std::size_t i = 0; i < watched.size() && i + 1 < descriptors.size(); ++i) {
        if (descriptors[i + 1].revents != 0 && !watched[i]->isGone) {
            watched[i]->ready();
        }
    }
    const auto timers = timers_;
    for (const auto& timer : timers) {
        if (timer->isGone || timer->due > steady_clock::now()) {
            continue;
        }
        if (timer->interval > 0) {
            timer->due += duration_cast<nanoseconds>(duration<double>(timer->interval));
        } else {
            timer->isGone = true;
        }
        timer->task();
    }
}

} // namespace vellory::test
