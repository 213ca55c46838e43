// SPDX-License-Identifier: Apache-2.0
// What reading a list of recently used files costs, against its size and against reading it whole:
// time, and the most memory that the program has held by then.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include "Support/AtomicFile.h"
#include "Support/Xml.h"
#include "Usage/RecentlyUsed.h"

namespace vellory {
namespace {

constexpr std::int64_t megabyte = 1'000'000;

/// A list of so many bytes: files of 40 apps, as toolkits write them. Gone at the end.
class ListFile {
  public:
    explicit ListFile(std::int64_t bytes)
        : file_(std::filesystem::temp_directory_path() /
                ("vellory-bench-" + std::to_string(getpid()) + ".xbel")) {
        std::ofstream out(file_, std::ios::binary);
        out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xbel version=\"1.0\" "
               "xmlns:bookmark=\"http://www.freedesktop.org/standards/desktop-bookmarks\" "
               "xmlns:mime=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
        for (int i = 0; out.tellp() < bytes; ++i) {
            const std::string number = std::to_string(i);
            const std::string app = std::to_string(i % 40);
            const std::string time = "2024-0" + std::to_string(1 + i % 9) + "-1" +
                                     std::to_string(i % 10) + "T09:30:00.123456Z";
            out << "  <bookmark href=\"file:///home/somebody/Documents/A%20folder/Document%20"
                << number << ".txt\" added=\"" << time << "\" modified=\"" << time
                << "\" visited=\"" << time << "\">\n    <info>\n      <metadata "
                << "owner=\"http://freedesktop.org\">\n        <mime:mime-type "
                << "type=\"text/plain\"/>\n        <bookmark:applications>\n          "
                << "<bookmark:application name=\"App " << app << "\" exec=\"&apos;program" << app
                << " %u&apos;\" modified=\"" << time << "\" count=\"1\"/>\n"
                << "        </bookmark:applications>\n      </metadata>\n    </info>\n"
                << "  </bookmark>\n";
        }
        out << "</xbel>\n";
    }
    ListFile(const ListFile&) = delete;
    ListFile& operator=(const ListFile&) = delete;
    ~ListFile() { std::filesystem::remove(file_); }

    const std::filesystem::path& path() const { return file_; }

  private:
    std::filesystem::path file_;
};

double peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024 / megabyte;
}

void streamed(benchmark::State& state) {
    const ListFile list(state.range(0) * megabyte);
    for (auto _ : state) {
        benchmark::DoNotOptimize(RecentlyUsed::read(list.path()));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * megabyte);
    state.counters["peak_MB"] = peakMegabytes();
}
BENCHMARK(streamed)->Arg(5)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond);

// The peer, after the other: it holds the whole file.
void whole(benchmark::State& state) {
    const ListFile list(state.range(0) * megabyte);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            RecentlyUsed::parse(*AtomicFile::read(list.path(), RecentlyUsed::largestFile)));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * megabyte);
    state.counters["peak_MB"] = peakMegabytes();
}
BENCHMARK(whole)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vellory

BENCHMARK_MAIN();
