// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <string>

#include "Apps/InstalledApp.h"
#include "model/AppLibrary.h"
#include "model/Notices.h"
#include "platform/RunningApps.h"

namespace vellory {

/// Opens apps for the user, and says so when one does not open. Identifiers of apps that are not
/// installed do nothing.
class AppOpener {
  public:
    AppOpener(const AppLibrary& library, RunningApps& runningApps, Notices& notices);

    /// Opens the app, or brings it to the front when it runs.
    void launch(const BundleID& id);
    /// Opens a new window or instance of the app.
    void launchNew(const BundleID& id);
    /// One of the app's `AppLibrary::actions`.
    void perform(const BundleID& id, const std::string& action);
    /// Opens a file with the app; false when that is known to be in vain.
    bool openFile(const BundleID& id, const std::filesystem::path& file);

  private:
    void open(const BundleID& id, RunningApps::Open mode);
    RunningApps::Completion noticeOnFailure(const BundleID& id);

    const AppLibrary& library_;
    RunningApps& runningApps_;
    Notices& notices_;
};

} // namespace vellory
