// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "model/AppLibrary.h"
#include "model/HabitCenter.h"
#include "model/LaunchRecorder.h"
#include "model/Ports.h"
#include "model/Prefs.h"
#include "model/RunningTracker.h"
#include "model/ShownGrid.h"
#include "model/SmartList.h"
#include "model/WorkspaceList.h"
#include "platform/Metadata.h"

namespace vellory {

/// Everything that is learned from how apps are used: launches, habits, the smart list, and what
/// the desktop itself remembers. Main thread only.
class UsageCenter : public QObject {
    Q_OBJECT

  public:
    /// The apps not opened for so long are listed as such.
    static constexpr int unusedDays = 90;
    static constexpr std::size_t documentsShown = 5;

    /// Whom it asks what is installed, shown, running and open.
    struct Parts {
        const AppLibrary& library;
        const ShownGrid& grid;
        const RunningTracker& running;
        WorkspaceList& workspaces;
        Prefs& prefs;
        Ports ports;
        Environment environment;
    };

    explicit UsageCenter(Parts parts, QObject* parent = nullptr);

    void load();
    /// Asks the desktop for the first time: an empty launch log begins with the answer.
    void begin();
    /// Asks the desktop anew, off the main thread.
    void refresh();
    /// An app was started, here or elsewhere.
    void record(const BundleID& app);
    /// Writes what waits to be written.
    void flush();

    const UsageStore& usage() const { return launches_.usage(); }
    const LaunchLog& launchLog() const { return launches_.log(); }
    HabitCenter& habits() { return habits_; }
    SmartList& smartList() { return smartList_; }

    /// The documents that the app opened last, the latest first; at most `documentsShown`.
    std::vector<std::filesystem::path> recentDocuments(const BundleID& app) const;

    struct UnusedApp {
        BundleID app;
        std::optional<Date> lastUsed; ///< nothing: never, as far as anybody knows
    };
    /// The installed apps that were not opened in `unusedDays`, stalest first.
    std::vector<UnusedApp> unusedApps() const;

  Q_SIGNALS:
    /// What the desktop remembers of apps is known, or known anew.
    void recordsChanged();

  private:
    void recall();
    void take(AppRecords records);
    std::optional<Date> rememberedUse(const BundleID& app) const;
    std::optional<Date> lastUse(const BundleID& app) const;

    Parts parts_;
    AppRecords records_;
    LaunchRecorder launches_;
    HabitCenter habits_;
    SmartList smartList_;
    bool isToBeSeeded_ = false;
    /// Counts the questions: an answer that was overtaken is dropped.
    unsigned request_ = 0;
};

} // namespace vellory
