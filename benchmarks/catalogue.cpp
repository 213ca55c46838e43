// SPDX-License-Identifier: Apache-2.0
// Scanning installed apps against GIO's own list of them, over entries made for the purpose.
//
// GIO keeps what it has read and watches the folders, so each measured scan of either side runs in
// a process of its own, forked before this one has touched GIO, and reports its own time; the file
// system's cache is warm for both. The two sides take turns, so that what else the machine does
// hits both. The counter "ratio" is the median of ours by the median of theirs.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <gio/gio.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/apps/LinuxAppCatalogue.h"

namespace fs = std::filesystem;
using vellory::DesktopEntries;
using vellory::LinuxAppCatalogue;
using vellory::SessionEnvironment;

namespace {

/// Entries as real ones are: translated names, comments, keywords and actions.
class Machine {
  public:
    explicit Machine(int entries) {
        std::string name = (fs::temp_directory_path() / "vellory-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            std::abort();
        }
        folder_ = name;
        fs::create_directories(folder_ / "data/applications");
        for (int i = 0; i < entries; ++i) {
            const std::string number = std::to_string(i);
            std::ofstream file(folder_ / "data/applications" /
                               ("org.example.App" + number + ".desktop"));
            file << "[Desktop Entry]\nType=Application\nName=Application " << i * 7919 % entries
                 << "\nExec=true %U\nIcon=app" << number << "\nCategories=Utility;GTK;\n";
            for (const char* language : {"de", "fr", "sv", "es", "ja", "pt_BR", "ru", "zh_CN"}) {
                file << "Name[" << language << "]=Anwendung " << number << "\nComment[" << language
                     << "]=Was dieses Programm f\xC3\xBCr seine Benutzer tut\nKeywords[" << language
                     << "]=eins;zwei;drei;\n";
            }
            file << "StartupWMClass=App" << number
                 << "\nActions=new-window;\n\n[Desktop Action new-window]\nName=New Window\n"
                    "Exec=true --new-window\n";
        }
        setenv("HOME", folder_.c_str(), 1);
        setenv("XDG_DATA_HOME", (folder_ / "home").c_str(), 1);
        setenv("XDG_DATA_DIRS", (folder_ / "data").c_str(), 1);
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

  private:
    fs::path folder_;
};

std::size_t scanOurs() {
    const SessionEnvironment environment = SessionEnvironment::current();
    LinuxAppCatalogue catalogue(
        std::make_shared<DesktopEntries>(DesktopEntries::Options{environment, std::nullopt}),
        "en_US");
    return catalogue.scan(catalogue.roots({})).size();
}

std::size_t scanTheirs() {
    GList* all = g_app_info_get_all();
    std::size_t shown = 0;
    for (GList* info = all; info != nullptr; info = info->next) {
        shown += g_app_info_should_show(G_APP_INFO(info->data)) != FALSE ? 1 : 0;
    }
    g_list_free_full(all, g_object_unref);
    return shown;
}

/// The seconds that `scan` takes in a fresh process; less than 0 when it found another number.
double secondsOf(const std::function<std::size_t()>& scan, std::size_t expected) {
    int ends[2];
    if (pipe(ends) != 0) {
        return -1;
    }
    const pid_t child = fork();
    if (child == 0) {
        const auto start = std::chrono::steady_clock::now();
        const std::size_t found = scan();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        const double answer = found == expected ? took.count() : -1;
        const bool sent = write(ends[1], &answer, sizeof answer) == sizeof answer;
        _exit(sent ? 0 : 1);
    }
    close(ends[1]);
    double answer = -1;
    if (read(ends[0], &answer, sizeof answer) != sizeof answer) {
        answer = -1;
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return answer;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

void scanningApps(benchmark::State& state) {
    const auto entries = static_cast<int>(state.range(0));
    const Machine machine(entries);
    std::vector<double> ours;
    std::vector<double> theirs;
    for (auto _ : state) {
        const double peer = secondsOf(scanTheirs, static_cast<std::size_t>(entries));
        const double own = secondsOf(scanOurs, static_cast<std::size_t>(entries));
        if (peer < 0 || own < 0) {
            state.SkipWithError("a scan found another number of apps");
            return;
        }
        theirs.push_back(peer);
        ours.push_back(own);
        state.SetIterationTime(own);
    }
    state.counters["ours_ms"] = 1e3 * median(ours);
    state.counters["g_app_info_get_all_ms"] = 1e3 * median(theirs);
    state.counters["ratio"] = median(ours) / median(theirs);
}
BENCHMARK(scanningApps)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
