// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <set>
#include <string>

#include <QObject>

#include "Apps/InstalledApp.h"
#include "model/Ports.h"

namespace vellory {

/// Which apps run and what their badges say.
class RunningTracker : public QObject {
    Q_OBJECT

  public:
    explicit RunningTracker(const Ports& ports, QObject* parent = nullptr);

    /// The apps with windows of their own.
    const std::set<BundleID>& running() const { return running_; }
    const std::map<BundleID, std::string>& badges() const { return badges_; }

    void refreshRunning();
    /// Gathers the badges of what runs, off the main thread.
    void refreshBadges();
    void clearBadges();

  Q_SIGNALS:
    void runningChanged();
    void badgesChanged();

  private:
    /// Those of apps that run.
    void setBadges(std::map<BundleID, std::string> badges);

    Ports ports_;
    std::set<BundleID> running_;
    std::map<BundleID, std::string> badges_;
    /// Counts what was asked for: an answer that was overtaken is dropped.
    unsigned request_ = 0;
};

} // namespace vellory
