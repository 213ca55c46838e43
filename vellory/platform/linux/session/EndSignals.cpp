// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/EndSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace vellory {

namespace {

constexpr std::array endSignals{SIGTERM, SIGINT, SIGHUP};

/// A signal's handler may touch nothing but this.
volatile std::sig_atomic_t writeEnd = -1;

void note(int signal) {
    const int error = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(writeEnd, &one, sizeof one);
    std::signal(signal, SIG_DFL);
    errno = error;
}

} // namespace

EndSignals::EndSignals(EventLoop& loop, std::function<void()> end)
    : arrived_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      watch_(loop.watchReadable(arrived_, [this, end = std::move(end)] {
          std::uint64_t count = 0;
          [[maybe_unused]] const auto got = ::read(arrived_, &count, sizeof count);
          end();
      })) {
    writeEnd = arrived_;
    for (const int signal : endSignals) {
        struct sigaction action{};
        // Who started the program with a signal ignored, as nohup does, means that.
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
            continue;
        }
        action = {};
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    for (const int signal : endSignals) {
        struct sigaction action{};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == note) {
            std::signal(signal, SIG_DFL);
        }
    }
    writeEnd = -1;
    watch_.reset();
    ::close(arrived_);
}

} // namespace vellory
