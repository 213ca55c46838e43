// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/BackgroundStart.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vellory {

namespace {

[[noreturn]] void waitFor(pid_t other, int news) {
    char byte = 0;
    ssize_t got = 0;
    do {
        got = ::read(news, &byte, 1);
    } while (got < 0 && errno == EINTR);
    if (got == 1) {
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(other, &status, 0);
    ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
}

} // namespace

BackgroundStart::BackgroundStart() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    const Descriptor reading(ends[0]);
    news_ = Descriptor(ends[1]);
    const pid_t other = ::fork();
    if (other > 0) {
        news_ = Descriptor();
        waitFor(other, reading.get());
    }
    if (other == 0) {
        ::setsid();
    }
}

void BackgroundStart::succeeded() {
    const Descriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (nothing.isOpen()) {
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            ::dup2(nothing.get(), standard);
        }
    }
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(news_.get(), &byte, 1);
    news_ = Descriptor();
}

} // namespace vellory
