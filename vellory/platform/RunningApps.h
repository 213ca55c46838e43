// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Apps/InstalledApp.h"

namespace vellory {

struct RunningApp {
    BundleID bundleID;
    std::int64_t pid = 0;
    /// Has windows of its own that a user switches to (a Dock icon on macOS).
    bool isRegular = true;
    /// All of its windows are hidden (macOS) or iconified (Linux).
    bool isHidden = false;

    friend bool operator==(const RunningApp&, const RunningApp&) = default;
};

/// The apps that run now: asking, starting and steering them. Main thread; callbacks arrive there.
class RunningApps {
  public:
    /// What became of a start: nothing when the app started, else a sentence that says why not.
    using Completion = std::function<void(std::optional<std::string> failure)>;

    enum class Open {
        bringForward, ///< an app that runs is brought to the front instead of started again
        newInstance,  ///< always a new window or instance
        /// An app that runs is shown again if it was hidden; neither it nor one that is started is
        /// given the focus.
        inBackground
    };

    struct Observer {
        /// An app was started, by whomever: once for each start, however many windows come and go.
        /// What runs already is no news.
        std::function<void(const BundleID&)> launched = {};
        /// An app has closed its last window.
        std::function<void(const BundleID&)> quit = {};
        /// `list` has another answer without either: an app that lives in the background shows
        /// itself again.
        std::function<void()> changed = {};
    };

    virtual ~RunningApps() = default;

    /// In the order in which the desktop lists them.
    virtual std::vector<RunningApp> list() const = 0;

    /// Opens the app. What is started outlives this program, is told apart from it by the session
    /// manager where there is one, and inherits nothing that this program set in its environment.
    virtual void open(const InstalledApp& app, Open mode, Completion completion) = 0;

    /// Starts one of the app's `AppCatalogue::actions`.
    virtual void perform(const InstalledApp& app, const std::string& action,
                         Completion completion) = 0;

    /// Opens a file with the app, whether it runs or not.
    virtual void openFile(const InstalledApp& app, const std::filesystem::path& file,
                          Completion completion) = 0;

    // Each tells whether the app runs and could be asked.
    virtual bool activate(const BundleID& id) = 0;
    virtual bool hide(const BundleID& id) = 0;
    virtual bool unhide(const BundleID& id) = 0;
    /// Asks the app to quit; it may refuse, for example to save a document first.
    virtual bool quit(const BundleID& id) = 0;

    /// Who is told of apps that start and quit from now on; replaces the one before.
    virtual void observe(Observer observer) = 0;
};

} // namespace vellory
