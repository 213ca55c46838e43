// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>
#include <cstdlib>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vellory::test {

/// Runs `body` in a forked process and returns what it returned (0 to 255), or -1 when it did not
/// end by itself. What it does to its limits and rights stays there.
template <class Body>
int inChild(Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(static_cast<int>(body()));
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) {
        return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Gives up the rights of root, for whom no folder is read-only. To be called in a child.
inline bool becomeNobody() {
    constexpr uid_t nobody = 65534;
    return ::geteuid() != 0 ||
           (::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0);
}

/// Makes every file end after `bytes`, the way a full disk does: writing more fails. To be called
/// in a child.
inline bool limitFileSize(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    return ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

} // namespace vellory::test
