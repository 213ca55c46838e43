// SPDX-License-Identifier: Apache-2.0
// summons PROGRAM COUNT [ARGUMENT...]: starts the program with --report, hides and summons it COUNT
// times through its socket, and prints how long each summons took until its frame was on the screen
// (first, median, 95th percentile, longest), the resident memory after the first and after the
// last, and the processor time used in ten seconds of being hidden.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Has the program show its grid, or hide it, and waits until it was done.
void toggle() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string path = std::string(runtime == nullptr ? "" : runtime) + "/vellory/socket";
    const int connection = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        std::perror("summons: the program does not listen");
        std::exit(1);
    }
    const std::string line = "vellory://toggle\n";
    char answer[8];
    if (::write(connection, line.data(), line.size()) < 0 ||
        ::read(connection, answer, sizeof answer) < 0) {
        std::perror("summons");
    }
    ::close(connection);
}

void waitFor(FILE* report, const char* word) {
    char line[256];
    while (std::fgets(line, sizeof line, report) != nullptr) {
        if (std::strstr(line, word) != nullptr) {
            return;
        }
    }
    std::fprintf(stderr, "summons: the program ended\n");
    std::exit(1);
}

double residentMegabytes(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::atof(line.c_str() + 6) / 1024;
        }
    }
    return 0;
}

double processorSeconds(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string word;
    std::getline(stat, word, ')');
    double user = 0;
    double system = 0;
    for (int field = 3; field <= 15 && stat >> word; ++field) {
        if (field == 14) {
            user = std::atof(word.c_str());
        } else if (field == 15) {
            system = std::atof(word.c_str());
        }
    }
    return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: summons PROGRAM COUNT [ARGUMENT...]\n");
        return 2;
    }
    const int count = std::max(2, std::atoi(argv[2]));
    int ends[2];
    if (::pipe(ends) != 0) {
        return 1;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        std::vector<char*> arguments{argv[1]};
        std::string report = "--report";
        arguments.push_back(report.data());
        for (int i = 3; i < argc; ++i) {
            arguments.push_back(argv[i]);
        }
        arguments.push_back(nullptr);
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    FILE* report = ::fdopen(ends[0], "r");
    waitFor(report, "settled");
    const double before = residentMegabytes(child);

    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        toggle();
        waitFor(report, "hidden");
        const auto start = std::chrono::steady_clock::now();
        toggle();
        waitFor(report, "apps");
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    waitFor(report, "settled");
    const double after = residentMegabytes(child);
    toggle();
    waitFor(report, "hidden");
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const double used = processorSeconds(child);
    std::this_thread::sleep_for(std::chrono::seconds(10));
    const double idle = processorSeconds(child) - used;
    ::kill(child, SIGTERM);
    ::waitpid(child, nullptr, 0);

    const double first = times.front();
    std::ranges::sort(times);
    const auto at = [&](double share) {
        return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
    };
    std::printf(
        "%d summons: first %.1f ms, median %.1f ms, 95th percentile %.1f ms, longest %.1f ms\n",
        count, first, at(0.5), at(0.95), times.back());
    std::printf("resident memory: %.1f MB shown first, %.1f MB after the last\n", before, after);
    std::printf("processor time in ten seconds hidden: %.2f s\n", idle);
    return 0;
}
