// SPDX-License-Identifier: Apache-2.0
// What looking after installed apps costs: version comparison, update feeds, leftovers.
//
// The leftovers are measured only with VELLORY_BENCHMARK_HOME set to a home folder made by
// benchmarks/compare-leftovers, which also says which app to look for.
#include <cstdlib>
#include <string>

#include <benchmark/benchmark.h>

#include "Uninstall/Leftovers.h"
#include "Updates/AppUpdates.h"
#include "Updates/Versions.h"

using namespace vellory;

namespace {

/// Two versions of `parts` parts that differ in the last.
void compareVersions(benchmark::State& state) {
    std::string version;
    for (std::int64_t part = 1; part < state.range(0); ++part) {
        version += "12.";
    }
    const std::string older = version + "9";
    const std::string newer = version + "10";
    for (auto _ : state) {
        benchmark::DoNotOptimize(Versions::isNewer(newer, older));
    }
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(newer.size() * 2));
}
BENCHMARK(compareVersions)->RangeMultiplier(10)->Range(3, 30'000)->Complexity(benchmark::oN);

/// A feed of at least `bytes` bytes with the usual share of release notes.
std::string feed(std::size_t bytes) {
    std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?><rss version=\"2.0\" "
                       "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">"
                       "<channel><title>Editor</title>";
    for (int release = 0; text.size() < bytes; ++release) {
        const std::string number = std::to_string(release);
        text += "<item><title>Version 1." + number + "</title><description><![CDATA[<ul>";
        for (int note = 0; note < 8; ++note) {
            text += "<li>Something that people asked for works better than it did before</li>\n";
        }
        text += "</ul>]]></description><sparkle:version>" + number +
                "</sparkle:version><enclosure url=\"https://example.invalid/Editor-1." + number +
                ".zip\" length=\"12345678\" type=\"application/octet-stream\" "
                "sparkle:shortVersionString=\"1." +
                number + "\"/></item>\n";
    }
    return text + "</channel></rss>";
}

void readFeed(benchmark::State& state) {
    const std::string text = feed(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const auto latest = AppUpdates::appcastLatest(text);
        if (!latest) {
            state.SkipWithError("the feed was not read");
        }
        benchmark::DoNotOptimize(latest);
    }
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(readFeed)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

void findLeftovers(benchmark::State& state) {
    const char* home = std::getenv("VELLORY_BENCHMARK_HOME");
    if (home == nullptr) {
        state.SkipWithError("VELLORY_BENCHMARK_HOME is not set");
        return;
    }
    std::int64_t bytes = 0;
    std::size_t items = 0;
    for (auto _ : state) {
        const auto found = Leftovers::find("com.example.app", "Example", home);
        bytes = 0;
        items = found.size();
        for (const auto& item : found) {
            bytes += item.bytes;
        }
    }
    state.counters["items"] = static_cast<double>(items);
    state.counters["KiB"] = static_cast<double>(bytes / 1024);
}
BENCHMARK(findLeftovers)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
