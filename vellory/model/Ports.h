// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>

#include "Apps/InstalledApp.h"
#include "Board/VelloryPaths.h"
#include "Support/Calendar.h"
#include "Support/Uuid.h"

namespace vellory {

class AppCatalogue;
class Clock;
class Desktop;
class Displays;
class FocusSource;
class FolderWatcher;
class HotKeys;
class ImageChooser;
class Metadata;
class RunningApps;
class Scheduler;
class UserDefaults;
class WindowPlacer;

/// The platform as the application model sees it. All outlive the model.
struct Ports {
    AppCatalogue& catalogue;
    RunningApps& runningApps;
    WindowPlacer& windowPlacer;
    Desktop& desktop;
    Displays& displays;
    FocusSource& focusSource;
    HotKeys& hotKeys;
    Metadata& metadata;
    FolderWatcher& folderWatcher;
    ImageChooser& imageChooser;
    Clock& clock;
    Scheduler& scheduler;
    UserDefaults& defaults;
};

/// What the program is told about the machine and the user instead of asking for it itself.
struct Environment {
    VelloryPaths paths;
    std::string locale = "en_US"; ///< decides the order of names
    UuidSource newID = Uuid::random;
    /// What the platform calls this program; "com.quorvel.vellory" is known to be it as well.
    BundleID ownID = "com.quorvel.vellory";
    /// The desktop's own file manager and shell: never hidden or quit on the user's behalf.
    std::set<BundleID> desktopApps = {};
    Calendar calendar = Calendar("UTC"); ///< in which dates are shown
};

} // namespace vellory
