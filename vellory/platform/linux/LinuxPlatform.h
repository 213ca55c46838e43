// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "Apps/InstalledApp.h"
#include "platform/EventLoop.h"
#include "platform/HttpClient.h"
#include "platform/Scheduler.h"
#include "platform/linux/apps/LinuxAppCatalogue.h"
#include "platform/linux/apps/LinuxAppIcons.h"
#include "platform/linux/apps/LinuxRunningApps.h"
#include "platform/linux/desktop/LinuxDesktop.h"
#include "platform/linux/desktop/LinuxFocusSource.h"
#include "platform/linux/desktop/LinuxMetadata.h"
#include "platform/linux/windows/LinuxHotKeys.h"
#include "platform/linux/windows/LinuxWindowPlacer.h"

namespace vellory {

/// All ports as Linux implements them, made together because they share the desktop entries and the
/// session's environment.
class LinuxPlatform {
  public:
    /// Where the program keeps what.
    struct Folders {
        std::filesystem::path data;     ///< the user's folder for application data
        std::filesystem::path settings; ///< the settings file
        std::filesystem::path cache;    ///< what can be made again
    };

    /// What can be told before anything is set up.
    class Start {
      public:
        explicit Start(std::optional<std::filesystem::path> onlyEntries);

        /// The session's folder for sockets; one below the cache where the session has none.
        std::filesystem::path runtimeFolder() const;
        /// Whether a display answers.
        bool hasDisplay() const;
        /// Whether there is graphics hardware to draw with.
        bool hasGraphics() const;
        std::string sortLocale() const { return environment_.sortLocale(); }
        /// With `support` everything is kept in that folder.
        Folders folders(const std::optional<std::filesystem::path>& support) const;

        /// Begins to read what is installed while the rest is set up.
        void readAppsAhead() const { entries_->readAhead(); }

        const SessionEnvironment& environment() const { return environment_; }
        const std::shared_ptr<DesktopEntries>& entries() const { return entries_; }

      private:
        SessionEnvironment environment_;
        std::shared_ptr<DesktopEntries> entries_;
    };

    /// To be called first in `main`, before anything changes the environment. `onlyEntries` is the
    /// one folder of desktop entries to use instead of the user's and the system's.
    static Start begin(std::optional<std::filesystem::path> onlyEntries);

    /// `loop`, `scheduler` and `http` must outlive this object.
    LinuxPlatform(const Start& start, const Folders& folders, EventLoop& loop, Scheduler& scheduler,
                  const HttpClient& http);

    LinuxAppCatalogue& catalogue() { return catalogue_; }
    const LinuxAppIcons& icons() const { return icons_; }
    LinuxRunningApps& runningApps() { return runningApps_; }
    LinuxDesktop& desktop() { return desktop_; }
    LinuxMetadata& metadata() { return metadata_; }
    LinuxWindowPlacer& windowPlacer() { return windowPlacer_; }
    LinuxFocusSource& focusSource() { return focusSource_; }
    LinuxHotKeys& hotKeys() { return hotKeys_; }

    /// What the desktop itself consists of: shells, panels and file managers, by any desktop's
    /// names. Their windows of the types desktop and dock belong to no app at all.
    static std::set<BundleID> desktopApps();
    /// Whether the user's desktop is set to a dark appearance; dark when it does not say.
    bool prefersDark() const;

  private:
    SessionEnvironment environment_;
    std::shared_ptr<DesktopEntries> entries_;
    LinuxAppCatalogue catalogue_;
    LinuxAppIcons icons_;
    LinuxRunningApps runningApps_;
    LinuxDesktop desktop_;
    LinuxMetadata metadata_;
    LinuxWindowPlacer windowPlacer_;
    LinuxFocusSource focusSource_;
    LinuxHotKeys hotKeys_;
};

} // namespace vellory
