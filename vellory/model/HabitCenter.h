// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "Support/Calendar.h"
#include "Support/Date.h"
#include "Support/UserDefaults.h"
#include "Support/Uuid.h"
#include "Usage/HabitDetector.h"
#include "Usage/HabitLog.h"
#include "model/DelayedSave.h"
#include "model/WorkspaceList.h"

namespace vellory {

/// Notices which apps the user opens together and offers to keep each such group as a workspace.
/// What was declined is remembered and not offered again. Main thread only.
class HabitCenter : public QObject {
    Q_OBJECT

  public:
    using Habit = HabitDetector::Habit;

    struct Parts {
        std::filesystem::path file; ///< of the log
        UserDefaults& defaults;
        WorkspaceList& workspaces;
        const Clock& clock;
        Scheduler& scheduler;
        Calendar calendar;
        UuidSource newID;
        /// Whether the app can be offered: it is installed and not this program.
        std::function<bool(const BundleID&)> isKnown;
    };

    explicit HabitCenter(Parts parts, QObject* parent = nullptr);

    void load();
    /// Every start of an app.
    void record(const BundleID& app, Date at);
    /// Writes what waits to be written: for the end of the program.
    void flush();

    const HabitLog& log() const { return log_; }

    /// The strongest habits, as of the last search for them.
    const std::vector<Habit>& habits() const { return habits_; }
    /// Searches the log anew, off the main thread; `habitsChanged` follows if that finds others.
    void refresh();

    /// Keeps the habit as a workspace of that name.
    void accept(const Habit& habit, const std::string& name, HabitDetector::OpenAtTime openAtTime);
    /// The habit, and what is much like it, is not offered again.
    void dismiss(const Habit& habit);

  Q_SIGNALS:
    void habitsChanged();

  private:
    HabitDetector::AppSets workspaceApps() const;
    HabitDetector::AppSets dismissed() const;
    void setHabits(std::vector<Habit> habits);
    void drop(const Habit& habit);

    Parts parts_;
    HabitLog log_;
    DelayedSave save_;
    bool isEnding_ = false;
    std::vector<Habit> habits_;
    /// Counts the searches: an answer that was overtaken is dropped.
    unsigned request_ = 0;
};

} // namespace vellory
