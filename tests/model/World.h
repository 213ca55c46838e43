// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/AppModel.h"
#include "support/Boards.h"
#include "support/FakePorts.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {

/// A machine with a launcher: fakes for every port, a support folder of its own, and the notices
/// that the user saw.
struct World : FakePorts {
    TemporaryFolder folder;
    std::unique_ptr<AppModel> model;
    std::vector<Notice> notices;
    int welcomes = 0;
    int gridChanges = 0;

    VelloryPaths paths() const { return VelloryPaths(folder.path()); }
    BoardStore store() const {
        return BoardStore(paths().layout(), paths().layoutHistory(), BoardStore::defaultKeep,
                          [this] { return clock.now(); });
    }

    /// Apps whose names are their identifiers in upper case.
    void install(const std::vector<BundleID>& ids) {
        for (const BundleID& id : ids) {
            catalogue.install(id, Text::uppercased(id));
        }
    }

    /// The board that an earlier run left behind; the user has seen the welcome then.
    void leaveBoard(const Board& board) {
        ASSERT_TRUE(store().save(board).has_value());
        defaults.set("hasSeenWelcome", true);
    }

    AppModel& make(const std::string& zone = "UTC") {
        model = std::make_unique<AppModel>(ports(), Environment{.paths = paths(),
                                                                .locale = "en_US",
                                                                .newID = counting(1000),
                                                                .ownID = "com.quorvel.vellory",
                                                                .desktopApps = {"org.files"},
                                                                .calendar = Calendar(zone)});
        QObject::connect(&model->notices(), &Notices::posted,
                         [this](const Notice& notice) { notices.push_back(notice); });
        QObject::connect(model.get(), &AppModel::welcomeRequested, [this] { ++welcomes; });
        QObject::connect(model.get(), &AppModel::visibleTilesChanged, [this] { ++gridChanges; });
        return *model;
    }

    AppModel& start() {
        make().start();
        return *model;
    }

    /// The program as it runs with these apps and this board.
    AppModel& startWith(const std::vector<BundleID>& installed, const Board& board) {
        install(installed);
        leaveBoard(board);
        return start();
    }

    /// What the grid shows, in one line.
    std::string grid() const { return drawn(board(model->visibleTiles())); }
    /// What is in memory and what is on the disk.
    std::string inMemory() const { return drawn(model->board()); }
    std::string onDisk() const {
        const auto stored = store().load();
        return stored ? drawn(*stored) : "(none)";
    }
    /// What the last notice said.
    std::string lastNotice() const { return notices.empty() ? "" : notices.back().text; }
    /// The reasons in the history, newest first.
    std::vector<std::string> history() const {
        std::vector<std::string> reasons;
        for (const auto& snapshot : store().snapshots()) {
            reasons.push_back(snapshot.reason);
        }
        return reasons;
    }
};

} // namespace vellory::test
