// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <grp.h>
#include <spawn.h>
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

/// How a program is started beside its command.
struct Spawn {
    int output = STDOUT_FILENO; ///< where its standard output goes
    int error = STDERR_FILENO;
    std::vector<std::string> environment = {}; ///< ours when empty
    std::filesystem::path folder = ".";
};

/// Starts a program that is found on our path.
inline pid_t spawn(std::vector<std::string> command, Spawn how = {}) {
    const auto pointers = [](std::vector<std::string>& words) {
        std::vector<char*> out;
        std::ranges::transform(words, std::back_inserter(out),
                               [](auto& word) { return word.data(); });
        out.push_back(nullptr);
        return out;
    };
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, how.output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, how.error, STDERR_FILENO);
    posix_spawn_file_actions_addchdir_np(&files, how.folder.c_str());
    pid_t child = 0;
    const int result =
        posix_spawnp(&child, command[0].c_str(), &files, nullptr, pointers(command).data(),
                     how.environment.empty() ? environ : pointers(how.environment).data());
    posix_spawn_file_actions_destroy(&files);
    if (result != 0) {
        throw std::runtime_error(command[0] + " cannot be started");
    }
    return child;
}

/// Waits for a process: the code that it ended with, or 128 and the signal that ended it.
inline int endOf(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
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
