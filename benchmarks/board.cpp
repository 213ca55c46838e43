// SPDX-License-Identifier: Apache-2.0
// What operations on a large board cost, and how that grows. The board of every benchmark has as
// many tiles as its argument says, every tenth of them a folder of five apps.

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include "Board/AutoFolders.h"
#include "Board/Board.h"

namespace vellory {
namespace {

constexpr std::size_t folderEvery = 10;
constexpr std::size_t appsInFolder = 5;

std::string identifier(std::size_t number) {
    static constexpr std::array vendors{"com.example", "org.gnome", "net.studio-one",
                                        "io.github.me"};
    return std::string(vendors[number % vendors.size()]) + ".Application" + std::to_string(number);
}

UuidSource counting() {
    return [next = std::uint64_t{1}]() mutable {
        std::array<std::uint8_t, 16> bytes{};
        for (std::size_t i = 0; i < 8; ++i) {
            bytes[15 - i] = static_cast<std::uint8_t>(next >> (8 * i));
        }
        ++next;
        return Uuid(bytes);
    };
}

Board makeBoard(std::size_t tiles) {
    Board board;
    const UuidSource uuids = counting();
    std::size_t number = 0;
    for (std::size_t i = 0; i < tiles; ++i) {
        if (i % folderEvery != folderEvery - 1) {
            board.tiles.emplace_back(identifier(number++));
            continue;
        }
        Folder folder{.id = uuids(), .title = "Folder " + std::to_string(i), .apps = {}};
        while (folder.apps.size() < appsInFolder) {
            folder.apps.push_back(identifier(number++));
        }
        board.tiles.emplace_back(std::move(folder));
    }
    for (std::size_t i = 0; i < tiles; i += 7) {
        board.hidden.insert(identifier(i));
        board.renames[identifier(i + 1)] = "My App " + std::to_string(i);
    }
    return board;
}

enum class Names { ascii, mixed, cyrillic };

/// One or two invented words and sometimes a number, so that few names are equal, as with people's
/// apps; of the mixed ones every tenth has an accent.
std::unordered_map<std::string, std::string> makeNames(const Board& board, Names kind) {
    static constexpr std::array latin{"ba",  "cor", "do",  "fen", "ga",  "hi",  "ju",
                                      "ka",  "lo",  "mi",  "na",  "pho", "qui", "ro",
                                      "ste", "ta",  "ver", "wi",  "xo",  "zen"};
    static constexpr std::array cyrillic{"ба", "вер", "го", "ден", "жи", "за",  "ка",
                                         "ло", "ми",  "на", "по",  "ро", "сте", "та",
                                         "фо", "хи",  "це", "чу",  "ша", "эн"};
    const auto& syllables = kind == Names::cyrillic ? cyrillic : latin;
    std::mt19937 random(1);
    const auto appendWord = [&](std::string& name) {
        for (unsigned left = 2 + random() % 2; left > 0; --left) {
            name.append(syllables[random() % syllables.size()]);
        }
    };
    std::unordered_map<std::string, std::string> names;
    for (const BundleID& app : board.allApps()) {
        std::string name;
        appendWord(name);
        if (random() % 2 == 0) {
            name.push_back(' ');
            appendWord(name);
        }
        if (random() % 10 == 0) {
            name.append(" ").append(std::to_string(random() % 100));
        }
        if (kind == Names::mixed && random() % 10 == 0) {
            name.append("é");
        }
        names[app] = std::move(name);
    }
    return names;
}

std::size_t size(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Runs `operation` on a fresh copy of the board each time; the copying is not timed.
template <class Operation>
void onCopies(benchmark::State& state, Operation operation) {
    const Board original = makeBoard(size(state));
    for (auto _ : state) {
        state.PauseTiming();
        {
            Board board = original;
            state.ResumeTiming();
            operation(board);
            benchmark::DoNotOptimize(board.tiles.data());
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

void allApps(benchmark::State& state) {
    const Board board = makeBoard(size(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(board.allApps());
    }
    state.SetComplexityN(state.range(0));
}

void locateTheLast(benchmark::State& state) {
    const Board board = makeBoard(size(state));
    const BundleID last = board.allApps().back();
    for (auto _ : state) {
        benchmark::DoNotOptimize(board.locate(last));
    }
    state.SetComplexityN(state.range(0));
}

void removeTheFirst(benchmark::State& state) {
    onCopies(state, [](Board& board) { board.remove(identifier(0)); });
}

void moveTheLastTileToTheFront(benchmark::State& state) {
    onCopies(state, [](Board& board) { board.moveTile(board.tiles.back().id(), 0); });
}

void moveTheLastAppToTheFront(benchmark::State& state) {
    const BundleID last = makeBoard(size(state)).allApps().back();
    onCopies(state, [&](Board& board) { board.moveAppToTopLevel(last, 0); });
}

void dropTheFirstOntoTheLast(benchmark::State& state) {
    const UuidSource uuids = counting();
    onCopies(state, [&](Board& board) {
        board.drop(identifier(0), board.tiles.back().id(), "New", uuids);
    });
}

void makeAFolderOfEverySecondApp(benchmark::State& state) {
    const UuidSource uuids = counting();
    std::vector<BundleID> half;
    for (const BundleID& app : makeBoard(size(state)).allApps()) {
        if (half.empty() || app.size() % 2 == 0) {
            half.push_back(app);
        }
    }
    onCopies(state, [&](Board& board) { board.makeFolder(half, "New", uuids); });
}

void addAnAppToTheLastFolder(benchmark::State& state) {
    onCopies(state, [](Board& board) {
        board.updateFolder(board.tiles.back().folder()->id,
                           [](Folder& folder) { folder.apps.emplace_back("new"); });
    });
}

void dissolveTheFirstFolder(benchmark::State& state) {
    onCopies(state,
             [](Board& board) { board.dissolveFolder(board.tiles[folderEvery - 1].folder()->id); });
}

void dissolveAll(benchmark::State& state) {
    onCopies(state, [](Board& board) { board.dissolveAll(); });
}

void sortBy(benchmark::State& state, Names kind) {
    const auto names = makeNames(makeBoard(size(state)), kind);
    const Text::Collator english("en");
    onCopies(state, [&](Board& board) {
        board.sortBy([&](const BundleID& app) { return names.find(app)->second; }, english);
    });
}

/// What `sortBy` above pays for the table that its names come from, which is no part of the board.
void namesAlone(benchmark::State& state, Names kind) {
    const auto names = makeNames(makeBoard(size(state)), kind);
    onCopies(state, [&](Board& board) {
        for (const Tile& tile : board.tiles) {
            if (const BundleID* app = tile.app()) {
                std::string name = names.find(*app)->second;
                benchmark::DoNotOptimize(name);
            }
        }
    });
}

void sortByUse(benchmark::State& state) {
    onCopies(state, [](Board& board) {
        board.sortByUse([](const BundleID& app) {
            return static_cast<std::int64_t>(std::hash<std::string>{}(app) % 100);
        });
    });
}

/// A tenth of the apps is gone and as many are new.
void reconcile(benchmark::State& state) {
    std::vector<BundleID> installed = makeBoard(size(state)).allApps();
    for (std::size_t i = 0; i < installed.size(); i += 10) {
        installed[i] = "new." + std::to_string(i);
    }
    onCopies(state, [&](Board& board) { benchmark::DoNotOptimize(board.reconcile(installed)); });
}

void fromLayout(benchmark::State& state) {
    Layout layout;
    for (const Tile& tile : makeBoard(size(state)).tiles) {
        if (layout.pages.empty() || layout.pages.back().size() == 35) {
            layout.pages.emplace_back();
        }
        const Folder* folder = tile.folder();
        LayoutItem item;
        if (folder == nullptr) {
            item.content = LayoutItem::App{*tile.app(), "Title"};
        } else {
            LayoutPage page;
            for (const BundleID& app : folder->apps) {
                page.push_back({LayoutItem::App{app, "Title"}});
            }
            item.content = LayoutItem::Folder{folder->title, {page}};
        }
        layout.pages.back().push_back(std::move(item));
    }
    const UuidSource uuids = counting();
    for (auto _ : state) {
        benchmark::DoNotOptimize(Board(layout, uuids));
    }
    state.SetComplexityN(state.range(0));
}

void autoFolders(benchmark::State& state) {
    const Board board = makeBoard(size(state));
    const auto names = makeNames(board, Names::ascii);
    std::vector<InstalledApp> apps;
    for (const BundleID& app : board.allApps()) {
        apps.push_back({app, names.find(app)->second, "/Applications/" + app});
    }
    const Text::Collator english("en");
    const auto category = [](const InstalledApp& app) -> std::optional<std::string> {
        return app.bundleID.size() % 2 == 0 ? "public.app-category.games" : "none";
    };
    const UuidSource uuids = counting();
    for (auto _ : state) {
        benchmark::DoNotOptimize(AutoFolders::boardFor(apps, 2, category, english, uuids));
    }
    state.SetComplexityN(state.range(0));
}

void encode(benchmark::State& state) {
    const Board board = makeBoard(size(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(json::encode(board));
    }
    state.SetComplexityN(state.range(0));
}

void decode(benchmark::State& state) {
    const std::string text = json::encode(makeBoard(size(state)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(json::decode<Board>(text));
    }
    state.SetComplexityN(state.range(0));
    state.counters["bytes"] = static_cast<double>(text.size());
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(500)->Arg(5'000)->Arg(50'000)->Unit(benchmark::kMicrosecond);
    benchmark->Complexity(benchmark::oNLogN);
}

BENCHMARK(allApps)->Apply(sizes);
BENCHMARK(locateTheLast)->Apply(sizes);
BENCHMARK(removeTheFirst)->Apply(sizes);
BENCHMARK(moveTheLastTileToTheFront)->Apply(sizes);
BENCHMARK(moveTheLastAppToTheFront)->Apply(sizes);
BENCHMARK(dropTheFirstOntoTheLast)->Apply(sizes);
BENCHMARK(makeAFolderOfEverySecondApp)->Apply(sizes);
BENCHMARK(addAnAppToTheLastFolder)->Apply(sizes);
BENCHMARK(dissolveTheFirstFolder)->Apply(sizes);
BENCHMARK(dissolveAll)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, ascii, Names::ascii)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, mixed, Names::mixed)->Apply(sizes);
BENCHMARK_CAPTURE(sortBy, cyrillic, Names::cyrillic)->Apply(sizes);
BENCHMARK_CAPTURE(namesAlone, ascii, Names::ascii)->Apply(sizes);
BENCHMARK_CAPTURE(namesAlone, mixed, Names::mixed)->Apply(sizes);
BENCHMARK_CAPTURE(namesAlone, cyrillic, Names::cyrillic)->Apply(sizes);
BENCHMARK(sortByUse)->Apply(sizes);
BENCHMARK(reconcile)->Apply(sizes);
BENCHMARK(fromLayout)->Apply(sizes);
BENCHMARK(autoFolders)->Apply(sizes);
BENCHMARK(encode)->Apply(sizes);
BENCHMARK(decode)->Apply(sizes);

} // namespace
} // namespace vellory

BENCHMARK_MAIN();
