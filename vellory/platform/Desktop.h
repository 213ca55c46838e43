// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"
#include "platform/Image.h"

namespace vellory {

/// What the desktop around the apps offers. Main thread unless said otherwise.
class Desktop {
  public:
    enum class ActivationPolicy {
        regular,  ///< the program appears in the dock or task bar
        accessory ///< it does not
    };

    /// A region in pixels, the origin at the top left of the main display.
    struct Area {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };

    virtual ~Desktop() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// What lies behind the windows of a display: the wallpaper, else a still of the screen;
    /// nothing when neither can be had. Any thread but the main one: it may read and decode a large
    /// file.
    virtual std::optional<Image> backdrop(const Area& display) const = 0;

    /// The badge texts that running apps ask for (such as a count of unread messages). Any thread.
    virtual std::map<BundleID, std::string> badges() const = 0;

    // Handing something to the app that the user has for it; false when it is known to be in vain.
    /// `link` is an absolute link that `Link::parseTyped` takes.
    virtual bool openLink(const std::string& link) = 0;
    virtual bool openFile(const std::filesystem::path& file) = 0;

    /// Plays the system sound of that name, or the desktop's nearest to it. Never waits for its
    /// end.
    virtual void playSound(const std::string& name) = 0;

    // What is open in other programs, as far as they tell; both ask them and may wait a while. Any
    // thread.
    /// The folders in the windows of the file manager, as absolute paths.
    virtual std::vector<std::string> openFolders() const = 0;
    /// The addresses of the tabs of the running browsers, unfiltered, browser by browser.
    virtual std::vector<std::string> openTabs() const = 0;
};

} // namespace vellory
