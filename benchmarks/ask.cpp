// SPDX-License-Identifier: Apache-2.0
// What a keyword plan costs, with the apps made ready for it and without.
#include <array>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Ask/AskFallback.h"
#include "Ask/AskResolve.h"
#include "Support/Text.h"

using namespace vellory;

namespace {

constexpr std::array words{"meeting", "notes",  "calendar", "code",    "terminal", "browser",
                           "design",  "photo",  "music",    "video",   "email",    "writing",
                           "budget",  "travel", "weather",  "reading", "chat",     "backup",
                           "archive", "maps",   "drawing",  "podcast", "network",  "invoice"};

/// Apps with two-word names and twenty keywords each, the same ones every time.
std::vector<AskApp> apps(std::int64_t count) {
    std::vector<AskApp> out;
    for (std::int64_t i = 0; i < count; ++i) {
        const auto word = [&](std::int64_t n) {
            return std::string(words[static_cast<std::size_t>((i * 7 + n * 5) % 24)]);
        };
        AskApp app{"com.example.app" + std::to_string(i),
                   word(0) + " Studio " + std::to_string(i),
                   {},
                   static_cast<int>(i % 13)};
        for (std::int64_t n = 0; n < 5; ++n) {
            app.keywords.insert(word(n));
        }
        for (int n = 0; n < 15; ++n) {
            app.keywords.insert("keyword" + std::to_string((i * 31 + n * 17) % 997));
        }
        out.push_back(std::move(app));
    }
    return out;
}

std::vector<Workspace> workspaces(std::int64_t count) {
    std::vector<Workspace> out(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i].name = "Client Project " + std::to_string(i);
    }
    return out;
}

const Text::Collator collator("en_US");
const std::vector<std::string> layouts(20, "Travel Layout");

constexpr std::array requests{
    "set me up for a client call about the invoice on example.com",
    "sort out the backup of my travel archive before the weekend starts",
};

/// Which request, how many apps; a fifth as many workspaces.
void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"request", "apps"});
    for (const std::int64_t request : {0, 1}) {
        for (const std::int64_t count : {100, 1'000, 10'000}) {
            benchmark->Args({request, count});
        }
    }
    benchmark->Unit(benchmark::kMicrosecond);
}

void planFromScratch(benchmark::State& state) {
    const auto installed = apps(state.range(1));
    const auto saved = workspaces(state.range(1) / 5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            AskFallback::plan(requests[static_cast<std::size_t>(state.range(0))],
                              AskApps(installed, collator), saved, layouts));
    }
}
BENCHMARK(planFromScratch)->Apply(sizes);

void planWithAppsReady(benchmark::State& state) {
    const AskApps ready(apps(state.range(1)), collator);
    const auto saved = workspaces(state.range(1) / 5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(AskFallback::plan(
            requests[static_cast<std::size_t>(state.range(0))], ready, saved, layouts));
    }
}
BENCHMARK(planWithAppsReady)->Apply(sizes);

/// A proposal of six needs and eight loose names.
void completeProposal(benchmark::State& state) {
    const AskApps ready(apps(state.range(0)), collator);
    ProposedWorkspace proposal;
    proposal.needs = {"video meetings", "notes", "calendar", "email", "maps", "reading"};
    proposal.apps = {"Studio 7",        "\"notes studio\".",   "kalendar",
                     "Nothing Like It", "music studio 12 app", "vs",
                     "backpu",          "com.example.APP9"};
    for (auto _ : state) {
        benchmark::DoNotOptimize(AskResolve::complete(proposal, requests[0], ready, {}, layouts,
                                                      [](std::string_view) { return true; }));
    }
}
BENCHMARK(completeProposal)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
