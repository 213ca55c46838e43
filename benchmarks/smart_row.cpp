// SPDX-License-Identifier: Apache-2.0
// What the apps above the grid cost: when a minute or a launch has changed them, and when they are
// only asked for, as every frame may; with all the apps of a large machine and a full log.
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Usage/LaunchLog.h"
#include "model/AppModel.h"
#include "support/Boards.h"
#include "support/FakePorts.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

/// A started model with so many apps and the launches of the last hundred days.
struct Machine : FakePorts {
    explicit Machine(std::int64_t apps, std::int64_t launches) {
        const VelloryPaths paths(folder.path());
        LaunchLog log;
        log.limit = launches;
        for (std::int64_t i = 0; i < launches; ++i) {
            const double age =
                100.0 * 86'400 * static_cast<double>(launches - i) / static_cast<double>(launches);
            log.record("app" + std::to_string(i * 7919 % apps), clock.time - age);
        }
        if (!log.save(paths.launchLog())) {
            std::abort();
        }
        for (std::int64_t i = 0; i < apps; ++i) {
            catalogue.install("app" + std::to_string(i), "App " + std::to_string(i));
        }
        model = std::make_unique<AppModel>(
            ports(), Environment{.paths = paths, .calendar = Calendar("Europe/Stockholm")});
        model->start();
    }

    TemporaryFolder folder;
    std::unique_ptr<AppModel> model;
};

void afterAChange(benchmark::State& state) {
    Machine machine(500, state.range(0));
    SmartList& list = machine.model->learned().smartList();
    for (auto _ : state) {
        list.invalidate();
        benchmark::DoNotOptimize(list.apps().data());
    }
}
BENCHMARK(afterAChange)->Arg(400)->Arg(4000)->Arg(40'000)->Unit(benchmark::kMicrosecond);

void whileDrawn(benchmark::State& state) {
    Machine machine(500, 4000);
    SmartList& list = machine.model->learned().smartList();
    for (auto _ : state) {
        benchmark::DoNotOptimize(list.apps().data());
    }
}
BENCHMARK(whileDrawn);

} // namespace
} // namespace vellory::test

BENCHMARK_MAIN();
