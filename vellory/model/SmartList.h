// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string_view>
#include <vector>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "Support/Calendar.h"
#include "Support/Date.h"
#include "model/LaunchRecorder.h"
#include "model/Prefs.h"
#include "model/RunningTracker.h"
#include "model/ShownGrid.h"
#include "model/WorkspaceList.h"
#include "platform/Metadata.h"
#include "platform/Scheduler.h"

namespace vellory {

/// The few apps above the grid: those the user probably wants now, or by another rule of the
/// user's choice. Worked out when what it depends on has changed, never while it is drawn.
///
/// Chosen among the apps that the grid shows, in folders too; so what is hidden, or kept back by a
/// filter, is not suggested either. Apps that the user has taken out of the row and this program
/// itself are left out.
class SmartList : public QObject {
    Q_OBJECT

  public:
    using Mode = Prefs::SmartListMode;

    struct Parts {
        const ShownGrid& grid;
        const RunningTracker& running;
        const WorkspaceList& workspaces;
        const LaunchRecorder& launches;
        const AppRecords& records;
        Prefs& prefs;
        const Clock& clock;
        Scheduler& scheduler;
        Calendar calendar;
        BundleID ownID;
    };

    explicit SmartList(Parts parts, QObject* parent = nullptr);

    /// The apps, best first; none when the list is switched off.
    const std::vector<BundleID>& apps();
    /// What stands above them: "Suggested for now".
    std::string_view heading() const { return heading(mode_); }
    static std::string_view heading(Mode mode);
    Mode mode() const { return mode_; }

    /// How many apps there may be: as many as the grid has columns.
    int length() const { return length_; }
    void setLength(int length);

    /// Something that the list depends on has changed.
    void invalidate();

    /// Takes an app out of the row for good.
    void exclude(const BundleID& id);

  Q_SIGNALS:
    /// `apps` or `heading` has another answer.
    void changed();

  private:
    std::set<BundleID> candidates() const;
    std::vector<BundleID> newest(const std::set<BundleID>& among) const;
    std::vector<BundleID> worked() const;
    void update();

    Parts parts_;
    Mode mode_;
    int length_ = 7;
    bool isOutdated_ = true;
    std::vector<BundleID> apps_;
    Scheduler::Handle pending_;
};

} // namespace vellory
