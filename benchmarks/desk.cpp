// SPDX-License-Identifier: Apache-2.0
// What the desk time machine costs: reading a full week when its view opens, and the round of
// append and prune every quarter of an hour.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "Desk/DeskHistory.h"
#include "Support/AtomicFile.h"
#include "Support/Json.h"

namespace vellory {
namespace {

namespace fs = std::filesystem;

constexpr int snapshotsPerDay = 96;
constexpr int windowsPerSnapshot = 40;
constexpr double secondsPerDay = 86'400;
const Date firstDay = Date::since1970(1'772'841'600); // a midnight in UTC

DeskSnapshot snapshot(Date date, int number) {
    DeskSnapshot out;
    out.date = date;
    for (int app = 0; app < 15; ++app) {
        out.apps.push_back("org.example.Application" + std::to_string(app));
    }
    out.hidden = {out.apps[3], out.apps[7]};
    for (int window = 0; window < windowsPerSnapshot; ++window) {
        out.windows.push_back({out.apps[static_cast<std::size_t>(window) % out.apps.size()],
                               window / 15,
                               {window * 31.5, 25.0 + number, 905.5 + number, 640.25},
                               "Office Monitor 27"});
    }
    out.workspace = "Writing";
    return out;
}

std::vector<DeskSnapshot> fullDay(int day) {
    std::vector<DeskSnapshot> out;
    for (int i = 0; i < snapshotsPerDay; ++i) {
        out.push_back(snapshot(firstDay + day * secondsPerDay + i * 900.0, i));
    }
    return out;
}

/// A folder with `days` full days, gone at the end.
class History {
  public:
    explicit History(int days) {
        std::string pattern = (fs::temp_directory_path() / "vellory-desk.XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        for (int day = 0; day < days; ++day) {
            const auto file = history().fileFor(firstDay + day * secondsPerDay);
            const std::string text = json::encode(fullDay(day), json::Style::compact);
            if (!AtomicFile::write(*file, text)) {
                std::abort();
            }
            bytes_ += static_cast<std::int64_t>(text.size());
        }
    }
    History(const History&) = delete;
    History& operator=(const History&) = delete;
    ~History() { fs::remove_all(folder_); }

    DeskHistory history() const { return {folder_, 7, Calendar("UTC")}; }
    std::int64_t bytes() const { return bytes_; }

  private:
    fs::path folder_;
    std::int64_t bytes_ = 0;
};

void readDays(benchmark::State& state) {
    const auto days = static_cast<int>(state.range(0));
    const History folder(days);
    for (auto _ : state) {
        const auto all = folder.history().all();
        if (all.size() != static_cast<std::size_t>(days) * snapshotsPerDay) {
            state.SkipWithError("not all snapshots were read");
            return;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * folder.bytes());
}
BENCHMARK(readDays)->Arg(1)->Arg(7)->Arg(35)->Unit(benchmark::kMillisecond);

/// The same text as a tree of JSON values, the peer that a reader of its own has to beat.
void parseSevenDaysAsTrees(benchmark::State& state) {
    std::vector<std::string> texts;
    for (int day = 0; day < 7; ++day) {
        texts.push_back(json::encode(fullDay(day), json::Style::compact));
    }
    for (auto _ : state) {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(json::parse(text));
        }
    }
}
BENCHMARK(parseSevenDaysAsTrees)->Unit(benchmark::kMillisecond);

void appendAChangedDeskToAFullDay(benchmark::State& state) {
    const History folder(1);
    const Date date = firstDay + 95 * 900.0 + 60;
    int number = 0;
    for (auto _ : state) {
        if (!folder.history().append(snapshot(date, 1000 + ++number * 100)).value_or(false)) {
            state.SkipWithError("not stored");
            return;
        }
    }
}
BENCHMARK(appendAChangedDeskToAFullDay)->Unit(benchmark::kMillisecond)->Iterations(20);

void pruneAWeekThatIsAllYoung(benchmark::State& state) {
    const History folder(7);
    for (auto _ : state) {
        folder.history().prune(firstDay + 7 * secondsPerDay);
    }
}
BENCHMARK(pruneAWeekThatIsAllYoung)->Unit(benchmark::kMillisecond);

void groupAWeekByDayAndHour(benchmark::State& state) {
    const History folder(7);
    const auto all = folder.history().all();
    const Calendar calendar("Europe/Stockholm");
    for (auto _ : state) {
        benchmark::DoNotOptimize(DeskHistory::days(all, calendar));
    }
}
BENCHMARK(groupAWeekByDayAndHour)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace vellory

BENCHMARK_MAIN();
