// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "Search/AppKeywords.h"
#include "Search/Calculator.h"
#include "Search/EmojiSearch.h"
#include "Search/FuzzySearch.h"
#include "Search/PurposeIndex.h"

namespace {

using namespace vellory;

using Words = std::vector<std::string_view>;

const Words words{"Photo", "Visual",  "Disk",   "Text",   "Mail",    "Fire",   "Open",    "Quick",
                  "Cloud", "Video",   "Sound",  "Color",  "Git",     "Code",   "Smart",   "Pixel",
                  "Star",  "Note",    "Task",   "Time",   "Screen",  "Remote", "Web",     "Chat",
                  "Voice", "Music",   "Book",   "Studio", "Editor",  "Viewer", "Player",  "Fox",
                  "Pro",   "Browser", "Writer", "Reader", "Monitor", "Center", "Library", "Lab"};

/// In letters beyond ASCII; what Finns, Greeks and Japanese have installed.
const Words otherWords{"Заметки", "Музыка", "Почта", "Экран",  "Σημειώσεις", "Μουσική",
                       "写真",    "編集",   "時計",  "メモ帳", "電卓",       "設定"};

std::string appName(std::mt19937& random, const Words& from) {
    static constexpr std::array<std::string_view, 4> joints{" ", "", "-", " "};
    std::string name(from[random() % from.size()]);
    for (auto more = random() % 3; more > 0; --more) {
        name.append(joints[random() % joints.size()]).append(from[random() % from.size()]);
    }
    return random() % 3 == 0 ? name + " " + std::to_string(random() % 2000) : name;
}

FuzzySearch::PreparedNames names(std::int64_t count, const Words& from) {
    std::mt19937 random(1);
    FuzzySearch::PreparedNames out;
    for (std::int64_t i = 0; i < count; ++i) {
        out.add(appName(random, from));
    }
    return out;
}

void rank(benchmark::State& state, const Words& from, std::string_view query) {
    const auto prepared = names(state.range(0), from);
    std::size_t found = 0;
    for (auto _ : state) {
        const auto matches = prepared.rank(query);
        found = matches.size();
        benchmark::DoNotOptimize(matches.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["found"] = static_cast<double>(found);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(rank, one_letter, words, "o")->Apply(sizes);
BENCHMARK_CAPTURE(rank, prefix, words, "pho")->Apply(sizes);
BENCHMARK_CAPTURE(rank, later_word, words, "stud")->Apply(sizes);
BENCHMARK_CAPTURE(rank, subsequence, words, "vsed")->Apply(sizes);
BENCHMARK_CAPTURE(rank, typo, words, "fierfox")->Apply(sizes);
BENCHMARK_CAPTURE(rank, no_match, words, "zqxj")->Apply(sizes);
BENCHMARK_CAPTURE(rank, other_scripts_prefix, otherWords, "муз")->Apply(sizes);
BENCHMARK_CAPTURE(rank, other_scripts_typo, otherWords, "музкыа")->Apply(sizes);

void prepare(benchmark::State& state, const Words& from) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(names(10'000, from).size());
    }
}
BENCHMARK_CAPTURE(prepare, ascii, words)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(prepare, other_scripts, otherWords)->Unit(benchmark::kMillisecond);

void scoreOnce(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(FuzzySearch::score("code", "Visual Studio Code"));
    }
}
BENCHMARK(scoreOnce);

void purpose(benchmark::State& state, std::string_view query) {
    static constexpr std::array<std::string_view, 6> categories{
        "photography", "developer-tools", "music", "productivity", "utilities", "puzzle-games"};
    std::mt19937 random(2);
    PurposeIndex index;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const std::string category =
            "public.app-category." + std::string(categories[random() % categories.size()]);
        index.add(AppKeywords::keywords(appName(random, words),
                                        {{"LSApplicationCategoryType", {category}}}));
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(index.search(query));
    }
}
BENCHMARK_CAPTURE(purpose, two_words, "edit photos")->Arg(2'000)->Arg(20'000)->Arg(200'000);
BENCHMARK_CAPTURE(purpose, sentence, "something to write my notes and plan the tasks of work")
    ->Arg(2'000);

void emoji(benchmark::State& state, std::string_view query) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(EmojiSearch::search(query, 40));
    }
}
BENCHMARK_CAPTURE(emoji, bare, ":");
BENCHMARK_CAPTURE(emoji, letter, ":f");
BENCHMARK_CAPTURE(emoji, word, ":heart");
BENCHMARK_CAPTURE(emoji, words, ":smiling face with");

void calculate(benchmark::State& state, std::string_view text) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Calculator::evaluate(text));
    }
}
BENCHMARK_CAPTURE(calculate, word, "visual studio code");
BENCHMARK_CAPTURE(calculate, word_with_pi, "raspberry pi imager");
BENCHMARK_CAPTURE(calculate, word_with_hyphen, "e-mail-client");
BENCHMARK_CAPTURE(calculate, word_in_cyrillic, "заметки");
BENCHMARK_CAPTURE(calculate, sum, "12 × 7 + sqrt(16)");

void calculateMegabyte(benchmark::State& state, std::string_view repeated) {
    std::string text;
    while (text.size() < 1'000'000) {
        text += repeated;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(Calculator::evaluate(text));
    }
}
BENCHMARK_CAPTURE(calculateMegabyte, sum, "1+")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(calculateMegabyte, digits, "1")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(calculateMegabyte, parentheses, "(")->Unit(benchmark::kMillisecond);

void format(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Calculator::format(1234567.891, "en_US"));
    }
}
BENCHMARK(format)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
