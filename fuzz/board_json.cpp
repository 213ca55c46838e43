// SPDX-License-Identifier: Apache-2.0
// A board file of any content is read or refused. What is read survives any operations with its
// invariants intact, and is read back equal once it is written.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unordered_set>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include "Board/Board.h"

namespace {

using namespace vellory;

void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

/// Whether no folder is empty, no two folders share an identity and no app stands twice.
bool isSound(const Board& board) {
    std::unordered_set<std::string> apps;
    std::unordered_set<Uuid> folders;
    const auto isNew = [&](const BundleID& app) { return apps.insert(app).second; };
    return std::ranges::all_of(board.tiles, [&](const Tile& tile) {
        const Folder* folder = tile.folder();
        return folder == nullptr ? isNew(*tile.app())
                                 : !folder->apps.empty() && folders.insert(folder->id).second &&
                                       std::ranges::all_of(folder->apps, isNew);
    });
}

/// Not part of any identifier that the fuzzer has time to guess.
UuidSource freshUuids() {
    return [next = std::uint8_t{0}]() mutable {
        std::array<std::uint8_t, 16> bytes{0xF0, 0x0D, 0xCA, 0xFE, 0xF0, 0x0D};
        bytes[15] = next++;
        return Uuid(bytes);
    };
}

class Play {
  public:
    Play(FuzzedDataProvider& input, Board& board) : input_(input), board_(board) {}

    void operate() {
        const std::vector<BundleID> before = sortedApps();
        const std::string tileID = anyTileID();
        const std::ptrdiff_t index = input_.ConsumeIntegralInRange<std::ptrdiff_t>(-2, 20);
        bool keepsApps = true;
        switch (input_.ConsumeIntegralInRange(0, 10)) {
        case 0:
            board_.moveTile(tileID, index);
            break;
        case 1:
            board_.moveAppToTopLevel(anyApp(), index);
            break;
        case 2: {
            keepsApps = false;
            const BundleID app = anyApp();
            const auto folder = board_.drop(app, tileID, "New", uuids_);
            require(std::ranges::includes(sortedApps(), before), "dropping loses no app");
            require(!folder || std::ranges::count(board_.folder(*folder)->apps, app) == 1,
                    "drop returns the folder that holds the app");
            break;
        }
        case 3: {
            const std::vector<BundleID> chosen{anyApp(), anyApp(), anyApp()};
            const auto folder = board_.makeFolder(chosen, "New", uuids_);
            require(!folder || board_.folder(*folder) != nullptr, "makeFolder makes the folder");
            break;
        }
        case 4:
            board_.dissolveAll();
            require(board_.allApps().size() == board_.tiles.size(), "dissolveAll leaves apps only");
            break;
        case 5: {
            keepsApps = false;
            const BundleID app = anyApp();
            const bool wasThere = board_.locate(app).has_value();
            require(board_.remove(app) == wasThere, "remove tells whether the app was there");
            require(!board_.locate(app), "remove removes");
            break;
        }
        case 6: {
            keepsApps = false;
            const std::vector<BundleID> installed{anyApp(), anyApp(), anyApp(), anyApp()};
            board_.reconcile(installed);
            std::vector<BundleID> wanted = installed;
            std::ranges::sort(wanted);
            wanted.erase(std::ranges::unique(wanted).begin(), wanted.end());
            require(sortedApps() == wanted, "reconcile leaves the installed apps");
            require(board_.reconcile(installed).empty(), "reconcile can be repeated");
            break;
        }
        case 7:
            keepsApps = false;
            board_.updateFolder(anyFolder(), [&](Folder& folder) {
                folder.title = input_.ConsumeRandomLengthString(8);
                folder.apps.resize(std::min<std::size_t>(folder.apps.size(), 2));
                folder.apps.push_back(anyApp());
            });
            break;
        case 8:
            board_.dissolveFolder(anyFolder());
            break;
        case 9:
            board_.sortBy([](const BundleID& app) { return app; }, collator_);
            break;
        case 10:
            board_.sortByUse([](const BundleID& app) { return std::int64_t(app.size()); });
            break;
        }
        require(isSound(board_), "the invariants hold after every operation");
        require(!keepsApps || sortedApps() == before, "moving loses no app");
    }

  private:
    std::vector<BundleID> sortedApps() const {
        auto apps = board_.allApps();
        std::ranges::sort(apps);
        return apps;
    }

    BundleID anyApp() {
        const auto apps = board_.allApps();
        return apps.empty() || input_.ConsumeIntegralInRange(0, 3) == 0
                   ? input_.ConsumeRandomLengthString(4)
                   : apps[input_.ConsumeIntegralInRange<std::size_t>(0, apps.size() - 1)];
    }

    const Tile* anyTile() {
        return board_.tiles.empty() ? nullptr
                                    : &board_.tiles[input_.ConsumeIntegralInRange<std::size_t>(
                                          0, board_.tiles.size() - 1)];
    }

    std::string anyTileID() {
        const Tile* tile = anyTile();
        return tile == nullptr ? "app:" : tile->id();
    }

    Uuid anyFolder() {
        const Tile* tile = anyTile();
        return tile == nullptr || tile->folder() == nullptr ? Uuid() : tile->folder()->id;
    }

    FuzzedDataProvider& input_;
    Board& board_;
    UuidSource uuids_ = freshUuids();
    inline static const Text::Collator collator_{"en"};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The operations are read from the end of the input, the board from its beginning.
    FuzzedDataProvider input(data, size);
    const auto operations = input.ConsumeIntegralInRange(0, 8);
    const std::string text = input.ConsumeRandomLengthString();
    auto read = json::decode<Board>(text);
    if (!read) {
        return 0;
    }
    const auto again = json::decode<Board>(json::encode(*read));
    require(again == *read, "what is written is read back equal");
    Board& board = *read;
    if (!isSound(board)) {
        return 0; // files that break the invariants are not repaired
    }
    Play play(input, board);
    for (int i = 0; i < operations; ++i) {
        play.operate();
    }
    const auto written = json::decode<Board>(json::encode(board));
    require(written.has_value(), "what operations make is written readably");
    require(json::encode(*written) == json::encode(board), "and is written the same again");
    return 0;
}
